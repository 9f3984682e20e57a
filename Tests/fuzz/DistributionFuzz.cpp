#include "FuzzJail.hpp"
#include "GNUstep/tools/package/Distribution.hpp"
#include "GNUstep/tools/package/PackageInfo.hpp"
#include "GNUstep/tools/tree/EntryPath.hpp"

#include <algorithm>

namespace {

using vant::fuzz::require;

/// An accepted path has only names.
void checkPath(std::string_view text) {
    const auto path = vant::tools::safeEntryPath(text);
    if (!path)
        return;
    const auto isName = [](const std::string &name) {
        return !name.empty() && name != "." && name != ".." && name.find('/') == std::string::npos;
    };
    require(std::ranges::all_of(path->folders, isName));
    require(path->name.empty() ? path->folders.empty() : isName(path->name));
}

template<class Read>
void readsOrRefuses(Read read) {
    try {
        read();
    } catch (const vant::tools::ExpansionError &) {
        return;
    }
}

} // namespace

// Whatever a package says of itself is read without harm or refused, and names each package once.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    checkPath(text);
    readsOrRefuses([&] { static_cast<void>(vant::tools::readPackageInfo(text)); });
    readsOrRefuses([&] {
        auto selected = vant::tools::readDistribution(text).selected;
        std::ranges::sort(selected, {}, &vant::tools::Distribution::Selected::file);
        require(std::ranges::adjacent_find(selected, {}, &vant::tools::Distribution::Selected::file) == selected.end());
    });
    return 0;
}
