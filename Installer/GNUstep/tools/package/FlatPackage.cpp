#include "GNUstep/tools/archive/ArchiveReader.hpp"
#include "GNUstep/tools/archive/ExpansionError.hpp"
#include "GNUstep/tools/package/Distribution.hpp"
#include "GNUstep/tools/package/Package.hpp"
#include "GNUstep/tools/package/PackageInfo.hpp"

#include <filesystem>
#include <map>

namespace vant::tools {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t longestTexts = std::size_t{8} << 20;
constexpr std::size_t mostEntries = 50'000;

/// What a flat package's table of contents tells, and its texts.
struct Contents {
    std::map<std::string, std::string> texts; ///< "PackageInfo" and "Distribution" files by path
    std::map<std::string, std::uint64_t> sizes;
};

bool isText(const std::string &path) {
    const auto name = fs::path(path).filename();
    return name == "PackageInfo" || name == "Distribution";
}

/// The data of the entry that the reader stands at.
std::string textIn(ArchiveReader &reader, std::size_t longest) {
    std::string text;
    for (DataBlock block; reader.nextBlock(block);) {
        if (block.bytes.size() > longest - text.size())
            throw ExpansionError("the package's descriptions exceed 8 MiB");
        text.append(block.bytes.data(), block.bytes.size());
    }
    return text;
}

Contents contentsOf(const std::string &path) {
    Contents contents;
    std::size_t length = 0;
    const auto reader = ArchiveReader::xar(path);
    for (Entry entry; reader->next(entry);) {
        const bool isNew = contents.sizes.try_emplace(entry.path, entry.size).second;
        if (!isNew || contents.sizes.size() > mostEntries)
            throw ExpansionError("the package's table of contents is damaged");
        if (!isText(entry.path))
            continue;
        contents.texts[entry.path] = textIn(*reader, longestTexts - length);
        length += contents.texts[entry.path].size();
    }
    return contents;
}

/// The component in a folder of the package ("" for the package's top).
Component componentIn(const Contents &contents, const std::string &folder) {
    const auto text = contents.texts.find(folder + "PackageInfo");
    if (text == contents.texts.end())
        throw ExpansionError("the package lacks \"" + folder + "PackageInfo\"");
    const auto info = readPackageInfo(text->second);
    Component component;
    component.installLocation = info.installLocation;
    if (const auto payload = contents.sizes.find(folder + "Payload"); payload != contents.sizes.end()) {
        component.payload = payload->first;
        component.size = payload->second;
    } else if (info.hasFiles) {
        throw ExpansionError("the package lacks \"" + folder + "Payload\"");
    }
    if (!info.preinstall.empty())
        component.before.push_back(info.preinstall);
    if (!info.postinstall.empty())
        component.after.push_back(info.postinstall);
    if (component.hasScripts() && !contents.sizes.contains(folder + "Scripts"))
        throw ExpansionError("the package lacks \"" + folder + "Scripts\"");
    if (component.hasScripts())
        component.scripts = folder + "Scripts";
    return component;
}

void addSelected(const Distribution &distribution, const Contents &contents, Package &package) {
    for (const auto &[file, location] : distribution.selected) {
        auto component = componentIn(contents, file + "/");
        component.name = file;
        if (!location.empty())
            component.installLocation = location;
        package.components.push_back(std::move(component));
    }
    if (package.components.empty())
        throw ExpansionError("the package's distribution selects no component");
}

} // namespace

Package openFlatPackage(const std::string &path) {
    const auto contents = contentsOf(path);
    Package package{.form = Package::Form::Flat, .path = path, .title = fs::path(path).stem(), .components = {}};
    const auto text = contents.texts.find("Distribution");
    if (text == contents.texts.end()) {
        package.components.push_back(componentIn(contents, ""));
        package.components.front().name = fs::path(path).filename();
        return package;
    }
    const auto distribution = readDistribution(text->second);
    if (!distribution.title.empty())
        package.title = distribution.title;
    addSelected(distribution, contents, package);
    return package;
}

void forEachFlatPart(const Package &package, const PartUse &use) {
    std::map<std::string, std::pair<std::size_t, Part>> wanted;
    for (std::size_t i = 0; i < package.components.size(); ++i) {
        const auto &component = package.components[i];
        if (!component.payload.empty())
            wanted[component.payload] = {i, Part::Payload};
        if (!component.scripts.empty())
            wanted[component.scripts] = {i, Part::Scripts};
    }
    const auto reader = ArchiveReader::xar(package.path);
    for (Entry entry; !wanted.empty() && reader->next(entry);) {
        const auto part = wanted.find(entry.path);
        if (part == wanted.end())
            continue;
        EntrySource source(reader->handle());
        use(part->second.first, part->second.second, source);
        wanted.erase(part);
    }
    if (!wanted.empty())
        throw ExpansionError("the package lacks \"" + wanted.begin()->first + "\"");
}

} // namespace vant::tools
