#pragma once
#include <cstddef>

namespace vant {

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
