#pragma once
#include <string_view>

namespace vant::host {

/// What a user can do about a failed download.
enum class DownloadFault {
    Connection, ///< look at the network
    Disk,       ///< make room
    Answer,     ///< ask whoever runs the site
};

/// What the platform's code of a failed download means, in English words.
[[nodiscard]] std::string_view downloadErrorWords(int code) noexcept;

[[nodiscard]] DownloadFault downloadFault(int code) noexcept;

} // namespace vant::host
