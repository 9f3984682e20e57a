#pragma once
#include "selection/ComponentCatalogue.hpp"

#include <string_view>

namespace vant {

/// How the full path of an item is made, for the items whose path is looked at.
enum class ExpandedPath {
    NotExamined,
    TildeExpanded, ///< the folder's path is tilde-expanded first
    AsItIs,
};

struct ExpandedItem {
    ExpandedAction action;
    ExpandedPath path;
    friend bool operator==(const ExpandedItem &, const ExpandedItem &) = default;
};

/// Classifies an item by its extension and file name; both are compared exactly.
[[nodiscard]] ExpandedItem classifyExpandedItem(std::string_view itemPath) noexcept;

} // namespace vant
