#import "Pointer.h"
#import "PaneTest.h"
#import "slides/VantInstallation+SlideRotation.h"
#import "ui/VantButton.h"
#import "ui/VantInstallation+AdministratorRights.h"

#include "ProcessorTime.hpp"
#include <atomic>
#include <cstdlib>
#include <thread>

using namespace vant::test;

/// Counts the presses of the left button that reach it.
@interface ClickCountingWindow : NSWindow {
@public
    int presses;
}
@end

@implementation ClickCountingWindow
- (void)sendEvent:(NSEvent *)event {
    presses += [event type] == NSLeftMouseDown ? 1 : 0;
    [super sendEvent:event];
}
@end

/// The pane in a window of its own, under a real pointer: xdotool moves and presses it on the display, and what arrives
/// comes through the platform's event queue. Each press is made once, and must be taken.
class Pointer : public PaneTest {
protected:
    void SetUp() override {
        if (!isThere(@"/usr/bin/xdotool"))
            GTEST_SKIP() << "xdotool is not installed";
        createIdlePane();
        [NSApp finishLaunching];
        window = [[ClickCountingWindow alloc] initWithContentRect:NSMakeRect(80, 80, 620, 420)
                                                        styleMask:NSTitledWindowMask
                                                          backing:NSBackingStoreBuffered
                                                            defer:NO];
        [window setContentView:[pane contentView]];
        [NSApp activateIgnoringOtherApps:YES];
        [window makeKeyAndOrderFront:nil];
        startTimer();
        [back() setEnabled:NO];
        ASSERT_TRUE(settlesDown(window));
        movePointer(NSMakePoint(5, 5));
    }

    static bool isThere(NSString *path) { return [[NSFileManager defaultManager] isExecutableFileAtPath:path]; }

    void startTimer() {
        field<NSTimer *>(pane, "timer") = [[NSTimer scheduledTimerWithTimeInterval:15.0
                                                                            target:pane
                                                                          selector:@selector(changeImageTrigger)
                                                                          userInfo:nil
                                                                           repeats:YES] retain];
    }

    void movePointer(NSPoint point) {
        ASSERT_TRUE(takesKeys(window));
        ASSERT_TRUE(handMakes(moveTo(window, point)));
    }

    NSPoint middleOf(NSView *view) {
        const NSRect frame = [view convertRect:[view bounds] toView:nil];
        return NSMakePoint(NSMidX(frame), NSMidY(frame));
    }

    void click(NSPoint point) {
        ASSERT_TRUE(takesKeys(window));
        ASSERT_TRUE(handClicks(window, point));
    }

    void press(const std::string &key) {
        ASSERT_TRUE(takesKeys(window));
        ASSERT_TRUE(handMakes("key " + key));
    }

    [[nodiscard]] bool turnsTo(NSInteger wanted) {
        return handleEventsUntil([=, this] { return page() == wanted; });
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
    /// The link's colour, once it is the one that is expected.
    [[nodiscard]] bool linkTurns(NSColor *colour) {
        return handleEventsUntil([=, this] { return linkIs(colour); });
    }
    bool linkIs(NSColor *colour) {
        return [colour isEqual:[[link() attributedTitle] attribute:NSForegroundColorAttributeName
                                                           atIndex:0
                                                    effectiveRange:nullptr]] != NO;
    }

    ClickCountingWindow *window = nil;
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
    ASSERT_TRUE(turnsTo(1));
    EXPECT_TRUE(isStopped());
    EXPECT_FALSE([next() isEnabled]);
    click(middleOf(back()));
    ASSERT_TRUE(turnsTo(0));
    EXPECT_FALSE([back() isEnabled]);
    EXPECT_EQ([dots() selectedColumn], 0);
}

TEST_F(Pointer, TheIndicatorPicksAPage) {
    click(dot(1));
    ASSERT_TRUE(turnsTo(1));
    EXPECT_EQ([dots() selectedColumn], 1);
    EXPECT_TRUE(isStopped());
    click(dot(0));
    ASSERT_TRUE(turnsTo(0));
    EXPECT_EQ([dots() selectedColumn], 0);
}

TEST_F(Pointer, TheIndicatorOfThePageShownStopsTheTimerOnly) {
    click(dot(0));
    ASSERT_TRUE(handleEventsUntil([this] { return isStopped(); }));
    EXPECT_EQ(page(), 0);
    EXPECT_EQ([dots() selectedColumn], 0);
}

TEST_F(Pointer, BackIsDeadOnTheFirstPage) {
    click(middleOf(back()));
    EXPECT_FALSE(isStopped());
    click(middleOf(next()));
    ASSERT_TRUE(turnsTo(1));
}

TEST_F(Pointer, KeysReachTheSlideControls) {
    [window makeFirstResponder:next()];
    press("space");
    ASSERT_TRUE(turnsTo(1));
    EXPECT_TRUE(isStopped());
}

TEST_F(Pointer, TheLinkIsRedUnderThePointerAndBlueElsewhere) {
    ASSERT_TRUE(linkIs([NSColor blueColor]));
    movePointer(middleOf(link()));
    EXPECT_TRUE(linkTurns([NSColor redColor]));
    EXPECT_EQ([NSCursor currentCursor], [NSCursor pointingHandCursor]);
    movePointer(NSMakePoint(5, 5));
    EXPECT_TRUE(linkTurns([NSColor blueColor]));
}

TEST_F(Pointer, APressTurnsTheLinkBlueAndSendsItsActionOnce) {
    PressCounter *counter = [[PressCounter alloc] init];
    [link() setTarget:counter];
    [link() setAction:@selector(pressed:)];
    movePointer(middleOf(link()));
    ASSERT_TRUE(linkTurns([NSColor redColor]));
    click(middleOf(link()));
    ASSERT_TRUE(handleEventsUntil([counter] { return counter->presses > 0; }));
    // Still inside, and blue all the same, until the pointer leaves and comes again.
    EXPECT_TRUE(linkIs([NSColor blueColor]));
    movePointer(NSMakePoint(5, 5));
    movePointer(middleOf(link()));
    EXPECT_TRUE(linkTurns([NSColor redColor]));
    EXPECT_EQ(counter->presses, 1);
}

TEST_F(Pointer, TheLinkIsTrackedWhereAResizedWindowPutsIt) {
    const NSPoint before = middleOf(link());
    [window setContentSize:NSMakeSize(760, 560)];
    const NSPoint after = middleOf(link());
    ASSERT_NE(before.y, after.y);
    ASSERT_TRUE(handleEventsUntil([this] { return [window frame].size.width >= 760; }));
    movePointer(after);
    EXPECT_TRUE(linkTurns([NSColor redColor]));
    movePointer(before);
    EXPECT_TRUE(linkTurns([NSColor blueColor]));
}

TEST_F(Pointer, AWindowAtRestLeavesTheProcessorAlone) {
    const double before = threadSeconds();
    NSDate *end = [NSDate dateWithTimeIntervalSinceNow:2];
    ASSERT_TRUE(handleEventsUntil([end] { return [end timeIntervalSinceNow] < 0; }));
    EXPECT_LT(threadSeconds() - before, 0.5) << "seconds of work in two seconds of rest";
}

/// The pane while the administrator prompt is up: a real panel, granted by the keyboard.
class PointerAtThePrompt : public Pointer {
protected:
    void SetUp() override {
        Pointer::SetUp();
        if (IsSkipped())
            return;
        unsetenv("VANT_AUTHORIZATION");
        // Beside the panel, which comes up in the middle of the screen.
        [window setFrameTopLeftPoint:NSMakePoint(0, NSMaxY([[window screen] frame]))];
        movePointer(NSMakePoint(5, 5));
        clickOnNext = moveTo(window, middleOf(next())) + pressAndRelease + "sleep 0.1 ";
    }

    /// Asks for the rights while somebody sits before the screen, on a thread of its own.
    bool isGrantedBy(const std::function<void(const std::atomic<bool> &answered)> &person) {
        std::atomic<bool> answered = false;
        std::thread thread([&] { person(answered); });
        const bool granted = [pane obtainAdministratorRights] != NO;
        answered = true;
        thread.join();
        return granted;
    }

    void expectThatThePaneSawNoClick() {
        // A click takes effect in the window's own loop, so a moment without events is the end of what was sent.
        NSDate *end = [NSDate dateWithTimeIntervalSinceNow:1];
        (void)handleEventsUntil([end] { return [end timeIntervalSinceNow] < 0; });
        EXPECT_EQ(window->presses, 0);
        EXPECT_EQ(page(), 0);
        EXPECT_EQ([dots() selectedColumn], 0);
        EXPECT_FALSE(isStopped());
    }

    /// The same place pressed once more, now that the prompt is gone: the clicks before did meet the button.
    void expectThatAClickIsSeenNow() {
        click(middleOf(next()));
        EXPECT_TRUE(turnsTo(1));
        EXPECT_GT(window->presses, 0);
    }

    std::string clickOnNext;
};

TEST_F(PointerAtThePrompt, AClickWhileItIsUpDoesNotReachThePane) {
    EXPECT_TRUE(isGrantedBy([this](const std::atomic<bool> &answered) {
        EXPECT_TRUE(isGivenKeys("Administrator Rights"));
        EXPECT_TRUE(xdotool(clickOnNext + clickOnNext + clickOnNext));
        EXPECT_FALSE(answered) << "the prompt was gone before the clicks were made";
        EXPECT_TRUE(xdotool("key Return"));
    }));
    expectThatThePaneSawNoClick();
    expectThatAClickIsSeenNow();
}
