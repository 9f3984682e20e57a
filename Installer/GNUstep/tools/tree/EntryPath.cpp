#include "GNUstep/tools/tree/EntryPath.hpp"

#include <algorithm>
#include <utility>

namespace vant::tools {

namespace {

constexpr std::size_t deepest = 200;
constexpr std::string_view appleDoubleMagic{"\x00\x05\x16\x07", 4};

/// The components between slashes, less the empty ones and the "." that change nothing.
std::vector<std::string_view> components(std::string_view path) {
    std::vector<std::string_view> found;
    while (!path.empty()) {
        const auto slash = std::min(path.find('/'), path.size());
        const auto component = path.substr(0, slash);
        if (!component.empty() && component != ".")
            found.push_back(component);
        path.remove_prefix(std::min(slash + 1, path.size()));
    }
    return found;
}

} // namespace

std::string EntryPath::text() const {
    std::string whole;
    for (const auto &folder : folders)
        whole += folder + '/';
    return whole + name;
}

std::optional<EntryPath> safeEntryPath(std::string_view path) {
    if (path.empty() || path.front() == '/' || path.find('\0') != std::string_view::npos)
        return std::nullopt;
    const auto found = components(path);
    if (found.size() > deepest || std::ranges::find(found, std::string_view("..")) != found.end())
        return std::nullopt;
    EntryPath entry;
    if (found.empty())
        return entry;
    entry.folders.assign(found.begin(), std::prev(found.end()));
    entry.name = found.back();
    return entry;
}

bool isMacMetadata(const EntryPath &path) {
    return (path.folders.empty() ? path.name : path.folders.front()) == "__MACOSX";
}

bool isAppleDouble(std::string_view name, std::string_view firstBytes) {
    return name.starts_with("._") && firstBytes.starts_with(appleDoubleMagic);
}

} // namespace vant::tools
