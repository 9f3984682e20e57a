#import "PaneTest.h"
#import "slides/VantInstallation+SlideRotation.h"
#import "ui/VantButton.h"
#import "ui/VantInstallation+AdministratorRights.h"

#include <atomic>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#import <GNUstepGUI/GSDisplayServer.h>
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
/// comes through the platform's event queue.
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
        movePointer(NSMakePoint(5, 5));
    }

    /// Waits until the window has kept the keys for a while: the window manager hands them about as windows appear, and
    /// what is pressed meanwhile is lost.
    bool keepsKeys() {
        int steady = 0;
        int without = 0;
        return handlesEventsUntil([&] {
            steady = [window isKeyWindow] ? steady + 1 : 0;
            // Asked for seldom: asking while the window manager is still answering makes the two take it in turns.
            if (steady == 0 && without++ % 25 == 0)
                [window makeKeyAndOrderFront:nil];
            return steady > 12;
        });
    }

    static bool isThere(NSString *path) { return [[NSFileManager defaultManager] isExecutableFileAtPath:path]; }

    void startTimer() {
        field<NSTimer *>(pane, "timer") = [[NSTimer scheduledTimerWithTimeInterval:15.0
                                                                            target:pane
                                                                          selector:@selector(changeImageTrigger)
                                                                          userInfo:nil
                                                                           repeats:YES] retain];
    }

    /// Hands events out as an application does, until the condition holds; false when it did not in time.
    static bool handlesEventsUntil(const std::function<bool()> &condition, double seconds = 10) {
        NSDate *end = [NSDate dateWithTimeIntervalSinceNow:seconds];
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
        ASSERT_TRUE(keepsKeys());
        NSTask *task = xdotool(moveTo(point));
        ASSERT_TRUE(handlesEventsUntil([task] { return ![task isRunning]; }));
    }

    NSPoint middleOf(NSView *view) {
        const NSRect frame = [view convertRect:[view bounds] toView:nil];
        return NSMakePoint(NSMidX(frame), NSMidY(frame));
    }

    void click(NSPoint point) {
        ASSERT_TRUE(keepsKeys());
        NSTask *task = xdotool(
            [moveTo(point) arrayByAddingObjectsFromArray:@[ @"mousedown", @"1", @"sleep", @"0.1", @"mouseup", @"1" ]]);
        ASSERT_TRUE(handlesEventsUntil([task] { return ![task isRunning]; }));
    }

    /// Does it again when nothing came of it: the window manager keeps a press that lands while it moves the focus.
    static bool leadsTo(const std::function<bool()> &condition, const std::function<void()> &act) {
        for (int attempt = 0; attempt < 5; ++attempt) {
            act();
            if (handlesEventsUntil(condition, 2))
                return true;
        }
        return false;
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
    ASSERT_TRUE(leadsTo([this] { return page() == 1; }, [&] { click(middleOf(next())); }));
    EXPECT_TRUE(isStopped());
    EXPECT_FALSE([next() isEnabled]);
    ASSERT_TRUE(leadsTo([this] { return page() == 0; }, [&] { click(middleOf(back())); }));
    EXPECT_FALSE([back() isEnabled]);
    EXPECT_EQ([dots() selectedColumn], 0);
}

TEST_F(Pointer, TheIndicatorPicksAPage) {
    ASSERT_TRUE(leadsTo([this] { return page() == 1; }, [&] { click(dot(1)); }));
    EXPECT_EQ([dots() selectedColumn], 1);
    EXPECT_TRUE(isStopped());
    ASSERT_TRUE(leadsTo([this] { return page() == 0; }, [&] { click(dot(0)); }));
    EXPECT_EQ([dots() selectedColumn], 0);
}

TEST_F(Pointer, TheIndicatorOfThePageShownStopsTheTimerOnly) {
    ASSERT_TRUE(leadsTo([this] { return isStopped(); }, [&] { click(dot(0)); }));
    EXPECT_EQ(page(), 0);
    EXPECT_EQ([dots() selectedColumn], 0);
}

TEST_F(Pointer, BackIsDeadOnTheFirstPage) {
    click(middleOf(back()));
    ASSERT_TRUE(leadsTo([this] { return page() == 1; }, [&] { click(middleOf(next())); }));
}

TEST_F(Pointer, KeysReachTheSlideControls) {
    [window makeFirstResponder:next()];
    ASSERT_TRUE(leadsTo([this] { return page() == 1; }, [] { xdotool(@[ @"key", @"space" ]); }));
    EXPECT_TRUE(isStopped());
}

TEST_F(Pointer, TheLinkIsRedUnderThePointerAndBlueElsewhere) {
    ASSERT_TRUE(linkIs([NSColor blueColor]));
    EXPECT_TRUE(leadsTo([this] { return linkIs([NSColor redColor]); },
                        [&] {
                            movePointer(NSMakePoint(5, 5));
                            movePointer(middleOf(link()));
                        }));
    EXPECT_EQ([NSCursor currentCursor], [NSCursor pointingHandCursor]);
    movePointer(NSMakePoint(5, 5));
    EXPECT_TRUE(handlesEventsUntil([this] { return linkIs([NSColor blueColor]); }));
}

TEST_F(Pointer, APressTurnsTheLinkBlueAndSendsItsActionOnce) {
    PressCounter *counter = [[PressCounter alloc] init];
    [link() setTarget:counter];
    [link() setAction:@selector(pressed:)];
    ASSERT_TRUE(leadsTo([this] { return linkIs([NSColor redColor]); },
                        [&] {
                            movePointer(NSMakePoint(5, 5));
                            movePointer(middleOf(link()));
                        }));
    ASSERT_TRUE(leadsTo([counter] { return counter->presses > 0; }, [&] { click(middleOf(link())); }));
    EXPECT_EQ(counter->presses, 1);
    // Still inside, and blue all the same, until the pointer leaves and comes again.
    EXPECT_TRUE(linkIs([NSColor blueColor]));
    EXPECT_TRUE(leadsTo([this] { return linkIs([NSColor redColor]); },
                        [&] {
                            movePointer(NSMakePoint(5, 5));
                            movePointer(middleOf(link()));
                        }));
}

TEST_F(Pointer, TheLinkIsTrackedWhereAResizedWindowPutsIt) {
    const NSPoint before = middleOf(link());
    [window setContentSize:NSMakeSize(760, 560)];
    const NSPoint after = middleOf(link());
    ASSERT_NE(before.y, after.y);
    ASSERT_TRUE(handlesEventsUntil([this] { return [window frame].size.width >= 760; }));
    EXPECT_TRUE(leadsTo([this] { return linkIs([NSColor redColor]); },
                        [&] {
                            movePointer(NSMakePoint(5, 5));
                            movePointer(after);
                        }));
    movePointer(before);
    EXPECT_TRUE(handlesEventsUntil([this] { return linkIs([NSColor blueColor]); }));
}

static double threadSeconds() {
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

TEST_F(Pointer, AWindowAtRestLeavesTheProcessorAlone) {
    const double before = threadSeconds();
    NSDate *end = [NSDate dateWithTimeIntervalSinceNow:2];
    ASSERT_TRUE(handlesEventsUntil([end] { return [end timeIntervalSinceNow] < 0; }));
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
        clickOnNext = text([moveTo(middleOf(next())) componentsJoinedByString:@" "]) +
                      " sleep 0.1 mousedown 1 sleep 0.1 mouseup 1 sleep 0.1 ";
    }

    /// Runs xdotool, on any thread. It says itself that it succeeded: the platform's tasks on the main thread collect
    /// whatever child has ended, its status included.
    static bool runXdotool(const std::string &arguments) {
        const std::string command = "timeout 15 xdotool " + arguments + " >/dev/null 2>&1 && echo done";
        FILE *output = popen(command.c_str(), "r"); // NOLINT(cert-env33-c)
        const bool succeeded = output != nullptr && std::fgetc(output) == 'd';
        if (output != nullptr)
            pclose(output);
        return succeeded;
    }

    /// Gives the panel the keys once it is there; the window manager refuses a window that it has not taken up yet.
    static bool activatePanel() {
        for (int attempt = 0; attempt < 50; ++attempt) {
            if (runXdotool(panel + "windowactivate --sync"))
                return true;
            runXdotool("sleep 0.1");
        }
        return false;
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

    /// Presses Return in the panel, again while the window manager gives the key to another window.
    static void pressReturn(const std::atomic<bool> &answered) {
        for (int attempt = 0; attempt < 8 && !answered; ++attempt)
            if (activatePanel())
                runXdotool("key Return sleep 1");
    }

    void expectThatThePaneSawNoClick() {
        // A click takes effect in the window's own loop, so a moment without events is the end of what was sent.
        NSDate *end = [NSDate dateWithTimeIntervalSinceNow:1];
        (void)handlesEventsUntil([end] { return [end timeIntervalSinceNow] < 0; });
        EXPECT_EQ(window->presses, 0);
        EXPECT_EQ(page(), 0);
        EXPECT_EQ([dots() selectedColumn], 0);
        EXPECT_FALSE(isStopped());
    }

    /// The same place pressed once more, now that the prompt is gone: the clicks before did meet the button.
    void expectThatAClickIsSeenNow() {
        EXPECT_TRUE(leadsTo([this] { return page() == 1; }, [this] { click(middleOf(next())); }));
        EXPECT_GT(window->presses, 0);
    }

    inline static const std::string panel = "search --sync --onlyvisible --name '^Administrator Rights$' ";
    std::string clickOnNext;
};

TEST_F(PointerAtThePrompt, AClickWhileItIsUpDoesNotReachThePane) {
    EXPECT_TRUE(isGrantedBy([this](const std::atomic<bool> &answered) {
        EXPECT_TRUE(activatePanel());
        // The window manager holds a press on a window without the keys back before it lets it through.
        EXPECT_TRUE(runXdotool(clickOnNext + clickOnNext + clickOnNext + " sleep 1"));
        EXPECT_FALSE(answered) << "the prompt was gone before the clicks were made";
        pressReturn(answered);
    }));
    expectThatThePaneSawNoClick();
    expectThatAClickIsSeenNow();
}
