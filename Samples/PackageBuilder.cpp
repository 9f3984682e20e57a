#include "PackageBuilder.hpp"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string_view>

namespace fs = std::filesystem;

namespace vant::samples {

namespace {

constexpr const char *xmlHead = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";

struct Replacement {
    char character;
    std::string_view text;
};

constexpr Replacement replacements[] = {
    {'&', "&amp;"}, {'<', "&lt;"}, {'>', "&gt;"}, {'"', "&quot;"}, {'\'', "&apos;"},
};

/// The payload as installers write it: every name begins with "./".
std::string payloadOf(const std::vector<Item> &files, Filter filter) {
    std::vector<Item> items{folder(".")};
    std::ranges::transform(files, std::back_inserter(items), [](Item item) {
        item.path.insert(0, "./");
        return item;
    });
    return archiveOf(Format::Cpio, filter, items);
}

std::string packageInfo(const std::string &identifier, const std::string &location, const std::vector<Item> &files) {
    std::size_t bytes = 0;
    for (const auto &item : files)
        bytes += item.content.size();
    std::string text = xmlHead;
    text.append(R"(<pkg-info format-version="2" version="1.0" auth="root" identifier=")").append(escaped(identifier));
    text.append(R"(" install-location=")").append(escaped(location)).append("\">\n");
    text.append(R"(    <payload numberOfFiles=")").append(std::to_string(files.size() + 1));
    text.append(R"(" installKBytes=")").append(std::to_string(bytes / 1024)).append("\"/>\n</pkg-info>\n");
    return text;
}

std::string percentEncoded(const std::string &text) {
    std::string encoded;
    for (const char character : text)
        encoded += character == ' ' ? std::string("%20") : std::string(1, character);
    return encoded;
}

std::string distribution(const std::string &title, const std::vector<ComponentFiles> &components) {
    std::string choices;
    std::string references;
    for (const auto &component : components) {
        const auto name = escaped(component.name);
        choices.append(R"(        <line choice=")").append(name).append("\"/>\n");
        references.append(R"(    <choice id=")").append(name).append(R"("><pkg-ref id=")").append(name);
        references.append("\"/></choice>\n").append(R"(    <pkg-ref id=")").append(name);
        references.append(R"(" version="1.0">#)").append(escaped(percentEncoded(component.name)));
        references.append("</pkg-ref>\n");
    }
    return xmlHead + ("<installer-gui-script minSpecVersion=\"1\">\n    <title>" + escaped(title)) +
           "</title>\n    <choices-outline>\n" + choices + "    </choices-outline>\n" + references +
           "</installer-gui-script>\n";
}

std::string bundleInfo(const std::string &title, const std::string &location) {
    const auto row = [](const char *key, const std::string &value) {
        return "    <key>" + std::string(key) + "</key>\n    <string>" + escaped(value) + "</string>\n";
    };
    return xmlHead + std::string("<plist version=\"1.0\">\n<dict>\n") + row("CFBundleName", title) +
           row("IFPkgFlagDefaultLocation", location) + "</dict>\n</plist>\n";
}

void writeText(const fs::path &path, const std::string &text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

} // namespace

std::string escaped(const std::string &text) {
    std::string safe;
    for (const char character : text) {
        const auto *known = std::ranges::find(replacements, character, &Replacement::character);
        safe += known == std::end(replacements) ? std::string(1, character) : std::string(known->text);
    }
    return safe;
}

std::vector<Item> componentItems(const std::string &folder, const std::string &identifier, const std::string &location,
                                 const std::vector<Item> &files, Payload payload) {
    const auto filter = payload == Payload::Gzip ? Filter::Gzip : Filter::None;
    return {file(folder + "PackageInfo", packageInfo(identifier, location, files)),
            file(folder + "Payload", payloadOf(files, filter))};
}

fs::path writeFlatPackage(const fs::path &path, const std::string &identifier, const std::string &location,
                          const std::vector<Item> &files, Payload payload) {
    return writeArchive(path, Format::Xar, Filter::None, componentItems("", identifier, location, files, payload));
}

fs::path writeProduct(const fs::path &path, const std::string &title, const std::vector<ComponentFiles> &components) {
    std::vector<Item> items{file("Distribution", distribution(title, components))};
    for (const auto &component : components) {
        items.push_back(folder(component.name));
        std::ranges::move(componentItems(component.name + "/", "example.quorvel." + component.name, component.location,
                                         component.files, Payload::Gzip),
                          std::back_inserter(items));
    }
    return writeArchive(path, Format::Xar, Filter::None, items);
}

fs::path writeBundlePackage(const fs::path &path, const std::string &title, const std::string &location,
                            const std::vector<Item> &files) {
    writeText(path / "Contents/Archive.pax.gz", payloadOf(files, Filter::Gzip));
    writeText(path / "Contents/Info.plist", bundleInfo(title, location));
    writeText(path / "Contents/PkgInfo", "pmkrpkg1");
    return path;
}

} // namespace vant::samples
