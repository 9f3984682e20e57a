#include "install/chain/ExpandedItem.hpp"

#include "base/Paths.hpp"

namespace vant {
namespace {

using enum ExpandedAction;
using enum ExpandedPath;

struct Row {
    std::string_view extension;
    ExpandedItem item;
};

// What the catalogue does not name. A metapackage only names packages that the tool would have to find elsewhere.
// clang-format off
constexpr Row otherItems[] = {
    {"pkg",  {SetAside, TildeExpanded}},
    {"mpkg", {SetAside, AsItIs}},
    {"app",  {SetAside, TildeExpanded}},
    {"",     {Skip,     TildeExpanded}},
};
// clang-format on

} // namespace

ExpandedItem classifyExpandedItem(std::string_view itemPath) noexcept {
    const Component *known = findComponent(lastPathComponent(itemPath));
    if (known && known->inArchive)
        return {*known->inArchive, TildeExpanded};
    const std::string_view extension = pathExtension(itemPath);
    for (const Row &row : otherItems)
        if (row.extension == extension)
            return row.item;
    return {Skip, NotExamined};
}

} // namespace vant
