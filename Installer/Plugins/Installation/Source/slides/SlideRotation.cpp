#include "slides/SlideRotation.hpp"

namespace vant {

namespace {

constexpr int pageCount = 2;
constexpr int indicatorTag = 0;
constexpr int backTag = 1;
constexpr int nextTag = 2;

int pageForControl(int tag, int selectedColumn) noexcept {
    switch (tag) {
    case indicatorTag:
        return selectedColumn;
    case backTag:
        return selectedColumn - 1;
    case nextTag:
        return selectedColumn + 1;
    default:
        return 0;
    }
}

} // namespace

SlideChange slideChange(std::optional<int> senderTag, int selectedColumn, int shownPage) noexcept {
    SlideChange change;
    // Without a selection the timer's next page is the first: (-1 + 1) % 2.
    change.page = senderTag ? pageForControl(*senderTag, selectedColumn) : (selectedColumn + 1) % pageCount;
    change.selects = senderTag != indicatorTag;
    change.stopsTimer = senderTag.has_value();
    change.turns = change.page != shownPage;
    return change;
}

} // namespace vant
