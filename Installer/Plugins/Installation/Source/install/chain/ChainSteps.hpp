#pragma once
#include "selection/Flow.hpp"

#include <cstddef>
#include <string>

namespace vant {

/// Where the chain stands when a package has ended.
struct ChainState {
    int index = 0;            ///< position of the package that ended
    std::size_t outcomes = 0; ///< packages that have an outcome, by file name
    std::size_t packages = 0; ///< packages in the flow's list
    bool anyFailed = false;   ///< whether any outcome is "Failed"; counts only at the list's end
};

/// Whether a list is at its end, so that what the outcomes say counts: each of its packages has one.
[[nodiscard]] bool isAtEnd(std::size_t outcomes, std::size_t packages) noexcept;

enum class Announcement { Nothing, NextWebPackage, WebComplete, NextMediaPackage, MediaComplete, MediaFailed };

/// What follows the package: the trace message is written first, then the position is advanced, then it is announced.
struct ChainStep {
    Announcement announcement = Announcement::Nothing;
    std::string trace;
    bool advances = false;
};

/// The step after a package. Nothing is announced when there are more outcomes than packages.
[[nodiscard]] ChainStep stepAfterPackage(Flow flow, const ChainState &state);

/// Where the web flow stands when one more archive has been expanded and searched.
struct UnpackState {
    std::size_t expanded; ///< archives expanded so far, this one included
    std::size_t selected; ///< downloads selected
    bool setAside;        ///< whether this archive held something to set aside
    bool desktopFolder;   ///< whether the set-aside folder is on the desktop
};

/// What follows.
enum class UnpackEnding {
    MoreToCome,
    ShowSetAside,    ///< the desktop folder is opened and nothing is installed
    SetAsideMissing, ///< nothing more happens
    Install,
};

/// Only the archive that completes the count decides between installing and setting aside: what an earlier one left on
/// the desktop does not stop the installation.
[[nodiscard]] UnpackEnding unpackEnding(const UnpackState &state) noexcept;

} // namespace vant
