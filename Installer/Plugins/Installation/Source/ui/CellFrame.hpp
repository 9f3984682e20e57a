#pragma once

namespace vant {

/// A rectangle in points, in a table's flipped coordinates: y grows downwards.
struct Frame {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    bool operator==(const Frame &) const = default;
};

/// Where a row's spinner lies in its cell: on the whole of it.
[[nodiscard]] Frame spinnerFrame(const Frame &cell) noexcept;

/// Where a row's bar lies in its cell: 4 points lower, with the cell's own size.
[[nodiscard]] Frame barFrame(const Frame &cell) noexcept;

} // namespace vant
