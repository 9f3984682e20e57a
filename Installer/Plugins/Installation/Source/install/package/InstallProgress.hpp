#pragma once
#include <cstddef>

namespace vant {

/// Where a list of packages stands: the position of the package at work and the number of packages.
struct ListPosition {
    int index = 0;
    std::size_t packages = 0;
};

/// The progress of the whole list at a percentage of the package at work, 0 to 100. It decides whether an update is
/// due, and the media flow shows it.
[[nodiscard]] constexpr double installProgress(double percentage, ListPosition at) noexcept {
    return 1.0 / static_cast<double>(at.packages) * percentage * (at.index + 1);
}

/// What the web flow shows for the same percentage: a share that grows as fewer packages remain. That it differs from
/// the progress above is meant.
[[nodiscard]] constexpr double webBarValue(double percentage, ListPosition at) noexcept {
    return percentage / (static_cast<double>(at.packages) - at.index);
}

} // namespace vant
