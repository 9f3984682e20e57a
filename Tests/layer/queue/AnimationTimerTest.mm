#import <AppKit/AppKit.h>

#include <gtest/gtest.h>
#include <malloc.h>

/// Counts its steps.
@interface VantStepCounter : NSProgressIndicator {
@public
    int steps;
}
@end

@implementation VantStepCounter

- (void)animate:(id)sender {
    ++steps;
    [super animate:sender];
}

@end

/// The turning of indicators, which GNUstep drives by a timer each.
class AnimationTimer : public testing::Test {
protected:
    AnimationTimer() { [NSApplication sharedApplication]; }

    static VantStepCounter *spinner() {
        auto *const made = [[VantStepCounter alloc] initWithFrame:NSMakeRect(0, 0, 16, 16)];
        [made setStyle:NSProgressIndicatorSpinningStyle];
        return made;
    }

    static VantStepCounter *turningSpinner() {
        VantStepCounter *const made = spinner();
        [made startAnimation:nil];
        return made;
    }

    /// Runs the loop until the spinner has made so many steps more.
    static bool makesSteps(VantStepCounter *spinner, int count, NSString *mode = NSDefaultRunLoopMode) {
        const int wanted = spinner->steps + count;
        NSDate *const latest = [NSDate dateWithTimeIntervalSinceNow:20];
        while (spinner->steps<wanted && [latest timeIntervalSinceNow]> 0)
            [[NSRunLoop currentRunLoop] runMode:mode beforeDate:latest];
        return spinner->steps >= wanted;
    }

    /// While another one makes some.
    static bool makesNone(VantStepCounter *spinner) {
        const int before = spinner->steps;
        VantStepCounter *const other = turningSpinner();
        EXPECT_TRUE(makesSteps(other, 3));
        [other stopAnimation:nil];
        [other release];
        return spinner->steps == before;
    }
};

TEST_F(AnimationTimer, EachTurningIndicatorMakesSteps) {
    VantStepCounter *first = turningSpinner();
    VantStepCounter *second = turningSpinner();
    EXPECT_TRUE(makesSteps(first, 2));
    EXPECT_TRUE(makesSteps(second, 2));
    EXPECT_TRUE(makesSteps(first, 2, NSModalPanelRunLoopMode)) << "while a panel is shown, too";
}

TEST_F(AnimationTimer, AStoppedIndicatorMakesNone) {
    VantStepCounter *stopped = turningSpinner();
    [stopped stopAnimation:nil];
    EXPECT_TRUE(makesNone(stopped));
}

TEST_F(AnimationTimer, AnIndicatorTurnsAgainAfterAllHaveRested) {
    VantStepCounter *again = turningSpinner();
    EXPECT_TRUE(makesSteps(again, 1));
    [again stopAnimation:nil];
    [[NSRunLoop currentRunLoop] runUntilDate:[NSDate dateWithTimeIntervalSinceNow:0.3]];
    [again startAnimation:nil];
    EXPECT_TRUE(makesSteps(again, 2));
}

TEST_F(AnimationTimer, AnIndicatorWithAPaceOfItsOwnKeepsIt) {
    VantStepCounter *slow = spinner();
    [slow setAnimationDelay:1000];
    [slow startAnimation:nil];
    EXPECT_TRUE(makesNone(slow));
    [slow setAnimationDelay:0.001];
    EXPECT_TRUE(makesSteps(slow, 2));
    [slow stopAnimation:nil];
    EXPECT_TRUE(makesNone(slow));
}

TEST_F(AnimationTimer, AStillBarMakesNoSteps) {
    VantStepCounter *bar = spinner();
    [bar setStyle:NSProgressIndicatorBarStyle];
    [bar setIndeterminate:NO];
    [bar startAnimation:nil];
    EXPECT_TRUE(makesNone(bar));
}

TEST_F(AnimationTimer, AStoppedIndicatorCanGo) {
    VantStepCounter *gone = spinner();
    const NSUInteger before = [gone retainCount];
    [gone startAnimation:nil];
    [gone stopAnimation:nil];
    EXPECT_EQ([gone retainCount], before);
    [gone release];
}

// Without a turn of the run loop between them, so that nothing is put in order meanwhile.
TEST_F(AnimationTimer, TenThousandStartsLeaveNothingBehind) {
    VantStepCounter *busy = spinner();
    const auto turn = [busy](int times) {
        for (int i = 0; i < times; ++i) {
            @autoreleasepool {
                [busy startAnimation:nil];
                [busy stopAnimation:nil];
            }
        }
    };
    turn(100);
    const std::size_t before = mallinfo2().uordblks;
    turn(10'000);
    EXPECT_LE(mallinfo2().uordblks, before + 10'000) << "a byte a start";
}
