#include "GNUstep/tracking/TrackingRules.hpp"

#include <gtest/gtest.h>

namespace {

using vant::isActive;
using vant::messagesFor;
using vant::TrackingMessages;
using vant::TrackingOptions;
using vant::trackingOptions;
using vant::TrackingSurroundings;

TEST(TrackingRules, OptionsAreThePlatformsBits) {
    const TrackingOptions link = trackingOptions(37);
    EXPECT_TRUE(link.enteredAndExited && link.cursor && link.inKeyWindow);
    EXPECT_FALSE(link.moved || link.whenFirstResponder || link.inActiveApplication || link.always || link.duringDrag);
    EXPECT_TRUE(trackingOptions(0x02).moved);
    EXPECT_TRUE(trackingOptions(0x10).whenFirstResponder);
    EXPECT_TRUE(trackingOptions(0x40).inActiveApplication);
    EXPECT_TRUE(trackingOptions(0x80).always);
    EXPECT_TRUE(trackingOptions(0x400).duringDrag);
}

TEST(TrackingRules, AnAreaIsActiveWhereItsOptionsSay) {
    const TrackingSurroundings none{};
    const TrackingSurroundings key{.keyWindow = true};
    const TrackingSurroundings active{.activeApplication = true};
    const TrackingSurroundings first{.firstResponder = true};
    const struct {
        TrackingOptions options;
        TrackingSurroundings surroundings;
        bool expected;
    } rows[] = {
        {{}, {.firstResponder = true, .keyWindow = true, .activeApplication = true}, false},
        {{.inKeyWindow = true}, key, true},
        {{.inKeyWindow = true}, active, false},
        {{.inActiveApplication = true}, active, true},
        {{.inActiveApplication = true}, key, false},
        {{.whenFirstResponder = true}, first, true},
        {{.whenFirstResponder = true}, key, false},
        {{.always = true}, none, true},
    };
    for (const auto &row : rows)
        EXPECT_EQ(isActive(row.options, row.surroundings), row.expected) << &row - rows;
}

TEST(TrackingRules, MessagesFollowTheChangeAndTheOptions) {
    const TrackingOptions all{.enteredAndExited = true, .moved = true, .cursor = true};
    EXPECT_EQ(messagesFor(all, false, true), (TrackingMessages{.entered = true, .cursorUpdate = true}));
    EXPECT_EQ(messagesFor(all, true, false), (TrackingMessages{.exited = true, .cursorReset = true}));
    EXPECT_EQ(messagesFor(all, true, true), (TrackingMessages{.moved = true}));
    EXPECT_EQ(messagesFor(all, false, false), TrackingMessages{});
}

TEST(TrackingRules, NothingIsSentThatWasNotAskedFor) {
    for (const bool was : {false, true})
        for (const bool is : {false, true})
            EXPECT_EQ(messagesFor({.inKeyWindow = true}, was, is), TrackingMessages{}) << was << is;
}

} // namespace
