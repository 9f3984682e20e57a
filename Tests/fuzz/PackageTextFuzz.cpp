#include "EntryPath.hpp"
#include "PackageText.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace {

void require(bool holds) {
    if (!holds)
        std::abort();
}

/// An accepted path has only names, and as a link it would stay inside.
void checkPath(std::string_view text) {
    const auto path = vant::safeEntryPath(text);
    if (!path)
        return;
    const auto isName = [](const std::string &name) {
        return !name.empty() && name != "." && name != ".." && name.find('/') == std::string::npos;
    };
    require(std::ranges::all_of(path->folders, isName));
    require(path->name.empty() ? path->folders.empty() : isName(path->name));
    require(vant::linkStaysInside(0, text)); // a path without a step up leads down from wherever it starts
}

} // namespace

// Whatever a package says of itself is read without harm, and what is found in it stands in it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    checkPath(text);
    const auto names = vant::componentsOf(text);
    require(names.size() <= size / 9); // "<pkg-ref>" stands before each
    for (const auto &found : vant::textsIn(text, "title"))
        require(!found.empty() && found.size() <= size);
    if (const auto value = vant::attributeIn(text, "pkg-info", "install-location"))
        require(value->size() < size);
    if (const auto value = vant::propertyIn(text, "CFBundleName"))
        require(value->size() < size);
    return 0;
}
