#include "slides/SlideRotation.hpp"
#include <gtest/gtest.h>
#include <optional>
#include <ostream>

using vant::SlideChange;
using vant::slideChange;

namespace {

constexpr std::optional<int> timer;
constexpr int indicator = 0;
constexpr int back = 1;
constexpr int next = 2;

struct Case {
    const char *name;
    std::optional<int> sender;
    int selected;
    int shown;
    SlideChange change;
};

// The sender, the selected column and the page shown; then page, selects, stopsTimer, turns.
constexpr Case cases[] = {
    {"a tick turns from page 0 to 1", timer, 0, 0, {1, true, false, true}},
    {"a tick turns from page 1 to 0", timer, 1, 1, {0, true, false, true}},
    {"a tick without a selection goes to page 0", timer, -1, -1, {0, true, false, true}},
    {"a tick to the page already shown redraws nothing", timer, -1, 0, {0, true, false, false}},
    {"Next on page 0", next, 0, 0, {1, true, true, true}},
    {"Next on page 1 asks for a page that is not there", next, 1, 1, {2, true, true, true}},
    {"Next without a selection goes to page 0", next, -1, -1, {0, true, true, true}},
    {"Back on page 1", back, 1, 1, {0, true, true, true}},
    {"Back on page 0 asks for a page that is not there", back, 0, 0, {-1, true, true, true}},
    {"the indicator of the other page", indicator, 1, 0, {1, false, true, true}},
    {"the indicator of the page shown stops the timer only", indicator, 0, 0, {0, false, true, false}},
    {"the indicator without a selection", indicator, -1, 0, {-1, false, true, true}},
    {"a control with another tag goes to page 0", 3, 1, 1, {0, true, true, true}},
    {"a negative tag is another tag", -1, 1, 1, {0, true, true, true}},
    {"another tag on page 0 selects it and redraws nothing", 7, 0, 0, {0, true, true, false}},
};

} // namespace

namespace vant {
static void PrintTo(const SlideChange &change, std::ostream *out) {
    *out << "{page " << change.page << ", selects " << change.selects << ", stops " << change.stopsTimer << ", turns "
         << change.turns << "}";
}
} // namespace vant

TEST(SlideRotation, FollowsTheSenderTheSelectionAndThePageShown) {
    for (const Case &each : cases)
        EXPECT_EQ(slideChange(each.sender, each.selected, each.shown), each.change) << each.name;
}

TEST(SlideRotation, TicksAloneAlternateForEver) {
    int page = 0;
    for (int tick = 1; tick <= 100; ++tick) {
        const SlideChange change = slideChange(timer, page, page);
        ASSERT_TRUE(change.turns);
        ASSERT_FALSE(change.stopsTimer);
        ASSERT_EQ(change.page, tick % 2);
        page = change.page;
    }
}

TEST(SlideRotation, NextAfterBackOnTheFirstPageShowsTheFirstPageAgain) {
    const SlideChange out = slideChange(back, 0, 0);
    EXPECT_EQ(out.page, -1);
    const SlideChange in = slideChange(next, -1, out.page);
    EXPECT_EQ(in.page, 0);
    EXPECT_TRUE(in.turns);
}
