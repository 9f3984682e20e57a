#import "Pointer.h"

#include "GNUstep/tracking/Tracking.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

constexpr NSTrackingAreaOptions linkOptions =
    NSTrackingMouseEnteredAndExited | NSTrackingCursorUpdate | NSTrackingActiveInKeyWindow;

} // namespace

/// A view that writes down what it is told.
@interface VantTrackedView : NSView {
@public
    std::vector<std::string> heard;
    int updates;
    NSDictionary *userInfo;
    NSTrackingArea *eventArea;
    BOOL removesAreaOnEnter;
}
@end

@implementation VantTrackedView
- (void)mouseEntered:(NSEvent *)event {
    heard.emplace_back("entered");
    userInfo = static_cast<NSDictionary *>([event userData]);
    eventArea = [event trackingArea];
    if (removesAreaOnEnter)
        for (NSTrackingArea *area in [self trackingAreas])
            [self removeTrackingArea:area];
}
- (void)mouseExited:(NSEvent *)event {
    (void)event;
    heard.emplace_back("exited");
}
- (void)mouseMoved:(NSEvent *)event {
    (void)event;
    heard.emplace_back("moved");
}
- (void)cursorUpdate:(NSEvent *)event {
    (void)event;
    heard.emplace_back("cursor");
}
- (void)updateTrackingAreas {
    ++updates;
}
@end

namespace {

using List = std::vector<std::string>;
using vant::test::handleEventsUntil;
using vant::test::settle;
using vant::test::takesKeys;
using vant::test::xdotool;

/// A window of 400 by 300 points with one view in its middle, the pointer beside the view.
class TrackingArea : public testing::Test {
protected:
    void SetUp() override {
        if (!vant::test::becomeApplication())
            GTEST_SKIP() << "no display";
        window = makeWindow(NSMakeRect(200, 300, 400, 300));
        view = [[VantTrackedView alloc] initWithFrame:NSMakeRect(100, 100, 200, 100)];
        [[window contentView] addSubview:view];
        ASSERT_TRUE(vant::test::settlesDown(window));
        pointAt(20, 20);
        ASSERT_TRUE(handleEventsUntil([&] { return view->updates > 0; }));
        settle();
    }
    void TearDown() override {
        [view release];
        [window close];
    }

    static NSWindow *makeWindow(NSRect frame) {
        NSWindow *made = [[NSWindow alloc] initWithContentRect:frame
                                                     styleMask:NSTitledWindowMask
                                                       backing:NSBackingStoreBuffered
                                                         defer:NO];
        [NSApp activateIgnoringOtherApps:YES];
        [made makeKeyAndOrderFront:nil];
        return made;
    }
    /// Moves the pointer to a point of the window's content, counted from its lower left.
    void pointAt(int x, int y) { ASSERT_TRUE(xdotool(vant::test::moveTo(window, NSMakePoint(x, y)))); }
    NSTrackingArea *track(NSTrackingAreaOptions options, NSDictionary *userInfo = nil) {
        return trackRect([view bounds], options, userInfo);
    }
    NSTrackingArea *trackRect(NSRect rect, NSTrackingAreaOptions options, NSDictionary *userInfo = nil) {
        NSTrackingArea *area = [[[NSTrackingArea alloc] initWithRect:rect options:options owner:view
                                                            userInfo:userInfo] autorelease];
        [view addTrackingArea:area];
        return area;
    }
    bool heardSoon(const List &expected) {
        return handleEventsUntil([&] { return view->heard.size() >= expected.size(); }) && view->heard == expected;
    }
    /// What is heard after the pointer went into the view and out again.
    List heardOnAVisit() {
        view->heard.clear();
        pointAt(200, 150);
        settle();
        pointAt(20, 20);
        settle();
        return view->heard;
    }

    NSWindow *window = nil;
    VantTrackedView *view = nil;
};

TEST_F(TrackingArea, OptionsOfALinkAreThePlatformsNumber) {
    EXPECT_EQ(linkOptions, 37U);
}

TEST_F(TrackingArea, KeepsWhatItWasMadeOf) {
    NSDictionary *information = [NSDictionary dictionaryWithObject:@"value" forKey:@"key"];
    NSTrackingArea *area = trackRect(NSMakeRect(1, 2, 3, 4), linkOptions, information);
    EXPECT_TRUE(NSEqualRects([area rect], NSMakeRect(1, 2, 3, 4)));
    EXPECT_EQ([area options], linkOptions);
    EXPECT_EQ([area owner], view);
    EXPECT_EQ([area userInfo], information);
}

TEST_F(TrackingArea, TellsItsOwnerOfEnteringAndLeaving) {
    track(linkOptions);
    pointAt(200, 150);
    EXPECT_TRUE(heardSoon({"entered", "cursor"}));
    pointAt(20, 20);
    EXPECT_TRUE(heardSoon({"entered", "cursor", "exited"}));
}

TEST_F(TrackingArea, TellsItsOwnerWhenThePointerLeavesTheWindow) {
    track(linkOptions);
    pointAt(200, 150);
    ASSERT_TRUE(heardSoon({"entered", "cursor"}));
    xdotool("mousemove 1200 20");
    EXPECT_TRUE(heardSoon({"entered", "cursor", "exited"}));
}

TEST_F(TrackingArea, EventTellsTheAreaAndItsInformation) {
    NSDictionary *information = [NSDictionary dictionaryWithObject:@"value" forKey:@"key"];
    NSTrackingArea *area = track(linkOptions, information);
    pointAt(200, 150);
    ASSERT_TRUE(heardSoon({"entered", "cursor"}));
    EXPECT_EQ(view->userInfo, information);
    EXPECT_EQ(view->eventArea, area);
}

TEST_F(TrackingArea, SendsOnlyWhatItsOptionsAskFor) {
    NSTrackingArea *area = track(NSTrackingCursorUpdate | NSTrackingActiveAlways);
    EXPECT_EQ(heardOnAVisit(), (List{"cursor"}));
    [view removeTrackingArea:area];
    area = track(NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways);
    EXPECT_EQ(heardOnAVisit(), (List{"entered", "exited"}));
    [view removeTrackingArea:area];
    track(NSTrackingMouseMoved | NSTrackingActiveAlways);
    pointAt(150, 150);
    settle();
    view->heard.clear();
    pointAt(160, 150);
    EXPECT_TRUE(heardSoon({"moved"}));
}

TEST_F(TrackingArea, FollowsItsRectangleNotTheView) {
    trackRect(NSMakeRect(0, 0, 50, 100), linkOptions);
    EXPECT_EQ(heardOnAVisit(), List{});
    pointAt(120, 150);
    EXPECT_TRUE(heardSoon({"entered", "cursor"}));
}

TEST_F(TrackingArea, MayLieBesideTheView) {
    pointAt(200, 150);
    settle();
    trackRect(NSMakeRect(-90, -90, 30, 30), linkOptions);
    pointAt(25, 25);
    EXPECT_TRUE(heardSoon({"entered", "cursor"}));
}

TEST_F(TrackingArea, IsSilentWhileItsWindowIsNotTheKeyWindow) {
    track(linkOptions);
    NSWindow *other = makeWindow(NSMakeRect(700, 300, 200, 200));
    ASSERT_TRUE(takesKeys(other));
    settle();
    EXPECT_EQ(heardOnAVisit(), List{});
    [other close];
}

TEST_F(TrackingArea, IsLeftWhenItsWindowCeasesToBeTheKeyWindow) {
    track(linkOptions);
    pointAt(200, 150);
    ASSERT_TRUE(heardSoon({"entered", "cursor"}));
    NSWindow *other = makeWindow(NSMakeRect(700, 300, 200, 200));
    EXPECT_TRUE(heardSoon({"entered", "cursor", "exited"}));
    [other close];
}

TEST_F(TrackingArea, ActiveAlwaysNeedsNoKeyWindow) {
    track(NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways);
    NSWindow *other = makeWindow(NSMakeRect(700, 300, 200, 200));
    ASSERT_TRUE(takesKeys(other));
    settle();
    EXPECT_EQ(heardOnAVisit(), (List{"entered", "exited"}));
    [other close];
}

TEST_F(TrackingArea, AHiddenViewHearsNothing) {
    track(linkOptions);
    [view setHidden:YES];
    EXPECT_EQ(heardOnAVisit(), List{});
}

TEST_F(TrackingArea, ARemovedAreaLeavesNothingBehind) {
    NSTrackingArea *area = track(linkOptions);
    pointAt(200, 150);
    ASSERT_TRUE(heardSoon({"entered", "cursor"}));
    [view removeTrackingArea:area];
    EXPECT_EQ([[view trackingAreas] count], 0U);
    EXPECT_EQ(heardOnAVisit(), List{});
    [view removeTrackingArea:area];
    [view removeTrackingArea:nil];
}

TEST_F(TrackingArea, AReplacedAreaSendsEachMessageOnce) {
    for (int i = 0; i < 20; ++i) {
        NSTrackingArea *area = track(linkOptions);
        [view removeTrackingArea:area];
    }
    track(linkOptions);
    EXPECT_EQ([[view trackingAreas] count], 1U);
    EXPECT_EQ(heardOnAVisit(), (List{"entered", "cursor", "exited"}));
}

TEST_F(TrackingArea, AnAreaAddedUnderThePointerIsFirstLeft) {
    pointAt(200, 150);
    settle();
    track(linkOptions);
    pointAt(210, 150);
    settle();
    EXPECT_EQ(view->heard, List{});
    pointAt(20, 20);
    EXPECT_TRUE(heardSoon({"exited"}));
}

TEST_F(TrackingArea, AssumedInsideItIsFirstLeft) {
    track(linkOptions | NSTrackingAssumeInside);
    pointAt(22, 22);
    EXPECT_TRUE(heardSoon({"exited"}));
}

TEST_F(TrackingArea, AHandlerMayRemoveTheArea) {
    track(linkOptions);
    track(linkOptions);
    view->removesAreaOnEnter = YES;
    EXPECT_EQ(heardOnAVisit(), (List{"entered"}));
}

TEST_F(TrackingArea, InVisibleRectFollowsTheViewsSize) {
    trackRect(NSZeroRect, linkOptions | NSTrackingInVisibleRect);
    [view setFrame:NSMakeRect(10, 10, 50, 50)];
    pointAt(200, 150);
    settle();
    view->heard.clear();
    pointAt(20, 20);
    EXPECT_TRUE(heardSoon({"entered", "cursor"}));
}

TEST_F(TrackingArea, FollowsAViewThatIsMoved) {
    track(linkOptions);
    [view setFrameOrigin:NSMakePoint(0, 0)];
    pointAt(150, 150);
    settle();
    view->heard.clear();
    pointAt(20, 20);
    EXPECT_TRUE(heardSoon({"entered", "cursor"}));
}

TEST_F(TrackingArea, IsReleasedWithItsView) {
    NSTrackingArea *area = nil;
    @autoreleasepool {
        NSView *mortal = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 10, 10)];
        area = [[NSTrackingArea alloc] initWithRect:NSMakeRect(0, 0, 10, 10)
                                            options:linkOptions
                                              owner:mortal
                                           userInfo:nil];
        [mortal addTrackingArea:area];
        EXPECT_EQ([area retainCount], 2U);
        [mortal release];
    }
    EXPECT_EQ([area retainCount], 1U);
    EXPECT_EQ(vant::areaAt(reinterpret_cast<NSInteger>(area)), nil);
    [area release];
}

TEST_F(TrackingArea, UpdateIsAskedForOnceForManyChanges) {
    const int before = view->updates;
    for (int i = 0; i < 10; ++i)
        [view setFrameOrigin:NSMakePoint(i, i)];
    settle();
    EXPECT_EQ(view->updates, before + 1);
}

TEST_F(TrackingArea, UpdateIsAskedForWhenThePlaceChanges) {
    const struct {
        const char *change;
        void (*make)(NSView *);
    } rows[] = {
        {"frame", [](NSView *v) { [v setFrame:NSMakeRect(90, 90, 120, 80)]; }},
        {"bounds", [](NSView *v) { [v setBounds:NSMakeRect(5, 5, 60, 40)]; }},
        {"superview", [](NSView *v) { [[v superview] setBoundsOrigin:NSMakePoint(7, 9)]; }},
    };
    for (const auto &row : rows) {
        const int before = view->updates;
        row.make(view);
        EXPECT_TRUE(handleEventsUntil([&] { return view->updates == before + 1; })) << row.change;
    }
}

TEST_F(TrackingArea, UpdateIsAskedForWhenTheViewScrolls) {
    NSScrollView *scroll = [[[NSScrollView alloc] initWithFrame:NSMakeRect(0, 0, 100, 100)] autorelease];
    NSView *document = [[[NSView alloc] initWithFrame:NSMakeRect(0, 0, 100, 1000)] autorelease];
    [scroll setDocumentView:document];
    [[window contentView] addSubview:scroll];
    [view removeFromSuperview];
    [document addSubview:view];
    settle();
    const int before = view->updates;
    [document scrollPoint:NSMakePoint(0, 300)];
    EXPECT_TRUE(handleEventsUntil([&] { return view->updates > before; }));
}

TEST_F(TrackingArea, UpdateIsNotAskedForWhenNothingChanges) {
    const int before = view->updates;
    [view setFrame:[view frame]];
    [[window contentView] setNeedsDisplay:YES];
    pointAt(200, 150);
    settle();
    EXPECT_EQ(view->updates, before);
}

TEST_F(TrackingArea, UpdateIsAskedForWhenAViewComesIntoAWindow) {
    VantTrackedView *newcomer = [[[VantTrackedView alloc] initWithFrame:NSMakeRect(0, 0, 10, 10)] autorelease];
    settle();
    EXPECT_EQ(newcomer->updates, 0);
    [[window contentView] addSubview:newcomer];
    EXPECT_TRUE(handleEventsUntil([&] { return newcomer->updates == 1; }));
}

} // namespace
