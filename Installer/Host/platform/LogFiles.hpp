#pragma once
#include <cstdint>
#include <sys/stat.h>

/// What each system says in its own way of files and of when they change.
namespace vant::host {

/// When a file's contents or place last changed, in nanoseconds.
[[nodiscard]] std::int64_t changeTime(const struct stat &status) noexcept;

/// What a file would be stamped with now: later than all that has been written, no later than all that will be. 0 when
/// no file can be made.
[[nodiscard]] std::int64_t fileTime() noexcept;

/// No later than what the next file to be written is stamped with; cheap enough to be asked in a loop.
[[nodiscard]] std::int64_t coarseTime() noexcept;

/// A second descriptor of an open file, for reading from its start; -1 when there can be none. The caller closes it.
[[nodiscard]] int openAgain(int file) noexcept;

} // namespace vant::host
