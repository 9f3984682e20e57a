#pragma once
#include <string_view>

namespace vant {

/// What happens to one item of an expanded archive.
enum class ExpandedAction {
    Skip,
    Install,            ///< becomes a web record
    InstallScanManager, ///< becomes a web record, and the scanner count is set
    SetAside,           ///< the whole folder goes to the desktop, unless it is there already
    SetAsideAtOnce,     ///< the whole folder goes to the desktop without a look at what is there
};

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
