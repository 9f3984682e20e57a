#include "GNUstep/tools/archive/ExpansionError.hpp"
#include "GNUstep/tools/package/Package.hpp"

#include <plist/plist.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <memory>

namespace vant::tools {

namespace fs = std::filesystem;

namespace {

constexpr std::uint64_t longestText = std::uint64_t{4} << 20;

/// Scripts in the order in which they run; those for an upgrade are not for a first installation.
constexpr std::array scriptsBefore{"preflight", "preinstall"};
constexpr std::array scriptsAfter{"postinstall", "postflight"};

struct Freed {
    void operator()(plist_t list) const { plist_free(list); }
    void operator()(char *text) const { std::free(text); }
};

using PropertyList = std::unique_ptr<std::remove_pointer_t<plist_t>, Freed>;

/// The property list of a file in either form, null when there is none that can be read.
PropertyList propertyListIn(const fs::path &path) {
    if (!fs::exists(path))
        return nullptr;
    FileSource source(path);
    if (source.size() > longestText)
        throw ExpansionError(path.string() + ": exceeds 4 MiB");
    std::string bytes;
    for (auto piece = source.next(); !piece.empty(); piece = source.next())
        bytes.append(piece.data(), piece.size());
    plist_t list = nullptr;
    plist_from_memory(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &list);
    return PropertyList(list);
}

std::string stringIn(const PropertyList &list, const char *key, const std::string &otherwise) {
    if (!list || plist_get_node_type(list.get()) != PLIST_DICT)
        return otherwise;
    const auto value = plist_dict_get_item(list.get(), key);
    if (value == nullptr || plist_get_node_type(value) != PLIST_STRING)
        return otherwise;
    char *text = nullptr;
    plist_get_string_val(value, &text);
    const std::unique_ptr<char, Freed> owner(text);
    return text == nullptr ? otherwise : text;
}

template<std::size_t Count>
std::vector<std::string> existing(const fs::path &folder, const std::array<const char *, Count> &names) {
    std::vector<std::string> found;
    for (const auto *name : names)
        if (fs::is_regular_file(folder / name))
            found.emplace_back(name);
    return found;
}

} // namespace

Package openBundlePackage(const std::string &path) {
    const auto contents = fs::path(path) / "Contents";
    auto archive = contents / "Archive.pax.gz";
    if (!fs::exists(archive))
        archive = contents / "Archive.pax";
    Component component;
    component.name = fs::path(path).filename();
    component.payload = archive;
    static_cast<void>(openRegularFile(archive, component.size));
    const auto list = propertyListIn(contents / "Info.plist");
    component.installLocation = stringIn(list, "IFPkgFlagDefaultLocation", "/");
    component.before = existing(contents / "Resources", scriptsBefore);
    component.after = existing(contents / "Resources", scriptsAfter);
    if (component.hasScripts())
        component.scripts = contents / "Resources";
    return {.form = Package::Form::Bundle,
            .path = path,
            .title = stringIn(list, "CFBundleName", fs::path(path).stem()),
            .components = {component}};
}

} // namespace vant::tools
