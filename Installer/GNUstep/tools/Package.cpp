#include "Package.hpp"

#include "ArchiveReader.hpp"
#include "ExpansionError.hpp"
#include "PackageText.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <numeric>

namespace vant {

namespace fs = std::filesystem;

namespace {

constexpr std::int64_t longestText = std::int64_t{4} << 20;
constexpr std::size_t mostEntries = 10'000;

/// What a flat package's table of contents tells, and its texts.
struct Contents {
    std::map<std::string, std::string> texts; ///< "PackageInfo" and "Distribution" files by path
    std::map<std::string, std::uint64_t> sizes;
};

std::string textOf(ArchiveReader &reader, archive_entry *entry) {
    if (archive_entry_size(entry) > longestText)
        throw ExpansionError("the package describes itself in too many words");
    std::string text;
    for (DataBlock block; reader.nextBlock(block);)
        text.append(block.bytes.data(), block.bytes.size());
    return text;
}

Contents contentsOf(const std::string &path) {
    Contents contents;
    auto reader = ArchiveReader::xar(path);
    while (archive_entry *entry = reader.next()) {
        const char *name = archive_entry_pathname(entry);
        if (name == nullptr || contents.sizes.size() >= mostEntries)
            throw ExpansionError("the package's table of contents is damaged");
        const auto last = fs::path(name).filename();
        contents.sizes[name] = static_cast<std::uint64_t>(std::max<la_int64_t>(archive_entry_size(entry), 0));
        if (last == "PackageInfo" || last == "Distribution")
            contents.texts[name] = textOf(reader, entry);
    }
    return contents;
}

/// The component in a folder of the package ("" for the package's top). A package of scripts has no payload.
Component componentIn(const Contents &contents, const std::string &folder) {
    const auto info = contents.texts.find(folder + "PackageInfo");
    if (info == contents.texts.end())
        throw ExpansionError("the package lacks \"" + folder + "PackageInfo\"");
    Component component;
    component.installLocation = attributeIn(info->second, "pkg-info", "install-location").value_or("/");
    if (const auto payload = contents.sizes.find(folder + "Payload"); payload != contents.sizes.end()) {
        component.payload = payload->first;
        component.size = payload->second;
    } else if (attributeIn(info->second, "payload", "numberOfFiles").value_or("0") != "0") {
        throw ExpansionError("the package lacks \"" + folder + "Payload\"");
    }
    return component;
}

Package flatPackage(const std::string &path) {
    const auto contents = contentsOf(path);
    Package package{.form = Package::Form::Flat, .path = path, .title = fs::path(path).stem()};
    const auto distribution = contents.texts.find("Distribution");
    if (distribution == contents.texts.end()) {
        package.components.push_back(componentIn(contents, ""));
        return package;
    }
    if (const auto titles = textsIn(distribution->second, "title"); !titles.empty())
        package.title = titles.front();
    for (const auto &name : componentsOf(distribution->second))
        package.components.push_back(componentIn(contents, name + "/"));
    if (package.components.empty())
        throw ExpansionError("the package's distribution names no component");
    return package;
}

Package bundlePackage(const std::string &path) {
    const auto contents = fs::path(path) / "Contents";
    auto archive = contents / "Archive.pax.gz";
    if (!fs::exists(archive))
        archive = contents / "Archive.pax";
    std::uint64_t size = 0;
    static_cast<void>(openRegularFile(archive, size));
    std::ifstream file(contents / "Info.plist");
    const std::string plist{std::istreambuf_iterator<char>(file), {}};
    return {.form = Package::Form::Bundle,
            .path = path,
            .title = propertyIn(plist, "CFBundleName").value_or(fs::path(path).stem()),
            .components = {{.payload = archive,
                            .installLocation = propertyIn(plist, "IFPkgFlagDefaultLocation").value_or("/"),
                            .size = size}}};
}

void withEntry(const Package &package, const Component &component, const std::function<void(ByteSource &)> &use) {
    auto outer = ArchiveReader::xar(package.path);
    while (archive_entry *entry = outer.next()) {
        const char *name = archive_entry_pathname(entry);
        if (name == nullptr || component.payload != name)
            continue;
        EntrySource source(outer.handle());
        use(source);
        return;
    }
    throw ExpansionError("the package lacks \"" + component.payload + "\"");
}

} // namespace

std::uint64_t Package::size() const {
    return std::accumulate(components.begin(), components.end(), std::uint64_t{0},
                           [](std::uint64_t sum, const Component &component) { return sum + component.size; });
}

Package openPackage(const std::string &path) {
    auto bare = path;
    while (bare.size() > 1 && bare.ends_with('/'))
        bare.pop_back();
    return fs::is_directory(bare) ? bundlePackage(bare) : flatPackage(bare);
}

void withPayload(const Package &package, const Component &component, const std::function<void(ByteSource &)> &use) {
    if (package.form == Package::Form::Flat)
        return withEntry(package, component, use);
    FileSource source(component.payload);
    use(source);
}

} // namespace vant
