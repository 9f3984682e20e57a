#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>

namespace vant {

/// How far a download is.
struct DownloadProgress {
    float fraction; ///< 0 to 1
    double percent; ///< 0 to 100, with the precision of 32 bits
};

/// Progress after `soFar` of `expected` bytes. Nothing when that is no less than was expected, which is so from the
/// last piece on, and for every piece of an unknown length (-1).
[[nodiscard]] std::optional<DownloadProgress> downloadProgress(std::int64_t soFar, std::int64_t expected) noexcept;

/// The overall bar's value while one file is at `percent`: its percentage spread over the components that have not been
/// expanded yet. Not finite when none remains.
[[nodiscard]] double overallShare(double percent, std::size_t selected, int expanded) noexcept;

} // namespace vant
