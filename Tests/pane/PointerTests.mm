#import "PaneTest.h"
#import "VantButton.h"
#import "VantInstallation+SlideRotation.h"

#include <cmath>
#import <GNUstepGUI/GSDisplayServer.h>

using namespace vant::test;

/// The pane in a window of its own, under a real pointer: xdotool moves and presses it on the display, and what arrives
/// comes through the platform's event queue.
class Pointer : public PaneTest {
protected:
    void SetUp() override {
        if (!isThere(@"/usr/bin/xdotool"))
            GTEST_SKIP() << "xdotool is not installed";
        createIdlePane();
        [NSApp finishLaunching];
        window = [[NSWindow alloc] initWithContentRect:NSMakeRect(80, 80, 620, 420)
                                             styleMask:NSTitledWindowMask
                                               backing:NSBackingStoreBuffered
                                                 defer:NO];
        [window setContentView:[pane contentView]];
        [NSApp activateIgnoringOtherApps:YES];
        [window makeKeyAndOrderFront:nil];
        startTimer();
        [back() setEnabled:NO];
        movePointer(NSMakePoint(5, 5));
        ASSERT_TRUE(handlesEventsUntil([this] { return [window isKeyWindow] != NO; }));
    }

    static bool isThere(NSString *path) { return [[NSFileManager defaultManager] isExecutableFileAtPath:path]; }

    void startTimer() {
        field<NSTimer *>(pane, "timer") = [[NSTimer scheduledTimerWithTimeInterval:15.0
                                                                            target:pane
                                                                          selector:@selector(changeImageTrigger)
                                                                          userInfo:nil
                                                                           repeats:YES] retain];
    }

    /// Hands events out as an application does, until the condition holds; false when it did not within 10 s.
    static bool handlesEventsUntil(const std::function<bool()> &condition) {
        NSDate *end = [NSDate dateWithTimeIntervalSinceNow:10];
        while (!condition()) {
            if ([end timeIntervalSinceNow] < 0)
                return false;
            NSEvent *event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                                untilDate:[NSDate dateWithTimeIntervalSinceNow:0.02]
                                                   inMode:NSDefaultRunLoopMode
                                                  dequeue:YES];
            if (event != nil)
                [NSApp sendEvent:event];
        }
        return true;
    }

    static NSTask *xdotool(NSArray *arguments) {
        return [NSTask launchedTaskWithLaunchPath:@"/usr/bin/xdotool" arguments:arguments];
    }

    static NSString *number(double value) { return [NSString stringWithFormat:@"%d", (int)std::lround(value)]; }

    /// To a point of the content view, whose origin is at the bottom left; the X server's is at the top left.
    NSArray *moveTo(NSPoint point) {
        const auto handle = (unsigned long)[GSServerForWindow(window) windowDevice:(int)[window windowNumber]];
        const CGFloat height = [[window contentView] bounds].size.height;
        return @[
            @"mousemove", @"--window", [NSString stringWithFormat:@"%lu", handle], number(point.x),
            number(height - point.y)
        ];
    }

    void movePointer(NSPoint point) {
        NSTask *task = xdotool(moveTo(point));
        ASSERT_TRUE(handlesEventsUntil([task] { return ![task isRunning]; }));
    }

    NSPoint middleOf(NSView *view) {
        const NSRect frame = [view convertRect:[view bounds] toView:nil];
        return NSMakePoint(NSMidX(frame), NSMidY(frame));
    }

    void click(NSPoint point) {
        NSTask *task = xdotool(
            [moveTo(point) arrayByAddingObjectsFromArray:@[ @"mousedown", @"1", @"sleep", @"0.1", @"mouseup", @"1" ]]);
        ASSERT_TRUE(handlesEventsUntil([task] { return ![task isRunning]; }));
    }

    NSInteger page() { return field<NSInteger>(pane, "prevSelection"); }
    NSButton *next() { return field<NSButton *>(pane, "nextButton"); }
    NSButton *back() { return field<NSButton *>(pane, "backButton"); }
    NSMatrix *dots() { return field<NSMatrix *>(pane, "radioButton"); }
    NSPoint dot(NSInteger column) {
        const NSRect frame = [dots() convertRect:[dots() cellFrameAtRow:0 column:column] toView:nil];
        return NSMakePoint(NSMidX(frame), NSMidY(frame));
    }
    bool isStopped() { return field<NSTimer *>(pane, "timer") == nil; }

    NSButton *link() {
        for (NSView *view in [[pane contentView] subviews])
            if ([view isKindOfClass:bundleClass(@"VantButton")])
                return (NSButton *)view;
        return nil;
    }
    bool linkIs(NSColor *colour) {
        return [colour isEqual:[[link() attributedTitle] attribute:NSForegroundColorAttributeName
                                                           atIndex:0
                                                    effectiveRange:nullptr]] != NO;
    }

    NSWindow *window = nil;
};

/// Takes the link's action in the place of the browser.
@interface PressCounter : NSObject {
@public
    int presses;
}
- (void)pressed:(id)sender;
@end

@implementation PressCounter
- (void)pressed:(id)sender {
    (void)sender;
    ++presses;
}
@end

TEST_F(Pointer, NextShowsTheSecondPageAndBackTheFirst) {
    EXPECT_FALSE(isStopped());
    click(middleOf(next()));
    ASSERT_TRUE(handlesEventsUntil([this] { return page() == 1; }));
    EXPECT_TRUE(isStopped());
    EXPECT_FALSE([next() isEnabled]);
    click(middleOf(back()));
    ASSERT_TRUE(handlesEventsUntil([this] { return page() == 0; }));
    EXPECT_FALSE([back() isEnabled]);
    EXPECT_EQ([dots() selectedColumn], 0);
}

TEST_F(Pointer, TheIndicatorPicksAPage) {
    click(dot(1));
    ASSERT_TRUE(handlesEventsUntil([this] { return page() == 1; }));
    EXPECT_EQ([dots() selectedColumn], 1);
    EXPECT_TRUE(isStopped());
    click(dot(0));
    ASSERT_TRUE(handlesEventsUntil([this] { return page() == 0; }));
    EXPECT_EQ([dots() selectedColumn], 0);
}

TEST_F(Pointer, TheIndicatorOfThePageShownStopsTheTimerOnly) {
    click(dot(0));
    ASSERT_TRUE(handlesEventsUntil([this] { return isStopped(); }));
    EXPECT_EQ(page(), 0);
    EXPECT_EQ([dots() selectedColumn], 0);
}

TEST_F(Pointer, BackIsDeadOnTheFirstPage) {
    click(middleOf(back()));
    click(middleOf(next()));
    ASSERT_TRUE(handlesEventsUntil([this] { return page() == 1; }));
}

TEST_F(Pointer, KeysReachTheSlideControls) {
    [window makeFirstResponder:next()];
    xdotool(@[ @"key", @"space" ]);
    ASSERT_TRUE(handlesEventsUntil([this] { return page() == 1; }));
    EXPECT_TRUE(isStopped());
}

TEST_F(Pointer, TheLinkIsRedUnderThePointerAndBlueElsewhere) {
    ASSERT_TRUE(linkIs([NSColor blueColor]));
    movePointer(middleOf(link()));
    EXPECT_TRUE(handlesEventsUntil([this] { return linkIs([NSColor redColor]); }));
    EXPECT_EQ([NSCursor currentCursor], [NSCursor pointingHandCursor]);
    movePointer(NSMakePoint(5, 5));
    EXPECT_TRUE(handlesEventsUntil([this] { return linkIs([NSColor blueColor]); }));
}

TEST_F(Pointer, APressTurnsTheLinkBlueAndSendsItsActionOnce) {
    PressCounter *counter = [[PressCounter alloc] init];
    [link() setTarget:counter];
    [link() setAction:@selector(pressed:)];
    movePointer(middleOf(link()));
    ASSERT_TRUE(handlesEventsUntil([this] { return linkIs([NSColor redColor]); }));
    click(middleOf(link()));
    ASSERT_TRUE(handlesEventsUntil([counter] { return counter->presses > 0; }));
    EXPECT_EQ(counter->presses, 1);
    // Still inside, and blue all the same, until the pointer leaves and comes again.
    EXPECT_TRUE(linkIs([NSColor blueColor]));
    movePointer(NSMakePoint(5, 5));
    movePointer(middleOf(link()));
    EXPECT_TRUE(handlesEventsUntil([this] { return linkIs([NSColor redColor]); }));
}

TEST_F(Pointer, TheLinkIsTrackedWhereAResizedWindowPutsIt) {
    const NSPoint before = middleOf(link());
    [window setContentSize:NSMakeSize(760, 560)];
    const NSPoint after = middleOf(link());
    ASSERT_NE(before.y, after.y);
    ASSERT_TRUE(handlesEventsUntil([this] { return [window frame].size.width >= 760; }));
    movePointer(NSMakePoint(5, 5));
    movePointer(after);
    EXPECT_TRUE(handlesEventsUntil([this] { return linkIs([NSColor redColor]); }));
    movePointer(before);
    EXPECT_TRUE(handlesEventsUntil([this] { return linkIs([NSColor blueColor]); }));
}
