#include "ui/CellFrame.hpp"

namespace vant {

namespace {
// A bar is shorter than the line of text beside it; the drop brings it level. The spinner is as tall as the line.
constexpr double barDrop = 4.0;
} // namespace

Frame spinnerFrame(const Frame &cell) noexcept {
    return cell;
}

Frame barFrame(const Frame &cell) noexcept {
    return {cell.x, cell.y + barDrop, cell.width, cell.height};
}

} // namespace vant
