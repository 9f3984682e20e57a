#pragma once
#include "Ending.hpp"

#include <optional>
#include <string>

namespace vant::host {

/// What the host says where the pane is silent: a key of the table "Notices", and the number that its text may hold.
struct Notice {
    std::string key;
    int code = 0;

    friend bool operator==(const Notice &, const Notice &) = default;
};

/// The words for the end of a run; absent where the pane says enough itself.
[[nodiscard]] std::optional<Notice> noticeOf(const Ending &ending);

/// The words for a run that goes on.
[[nodiscard]] std::optional<Notice> noticeOf(const Signs &signs);

/// Which package a run is at, counted from 1, when so many of the list have ended; 0 when it is at none.
[[nodiscard]] std::size_t packageAtWork(bool started, std::size_t ended, std::size_t packages) noexcept;

} // namespace vant::host
