#pragma once
#include <chrono>

namespace vant {

using Clock = std::chrono::steady_clock;

/// Time slice of one source.
struct Slice {
    Clock::time_point end = Clock::time_point::max();
    [[nodiscard]] bool isOver() const noexcept { return Clock::now() >= end; }
};

} // namespace vant
