#include <CoreFoundation/CoreFoundation.h>

#import <AppKit/AppKit.h>

#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

/// Stops the run loop from within a timer, an input or a waiting message, and counts what it got.
@interface VantLoopStopper : NSObject {
@public
    int stops;
    int ticks;
    BOOL stopping;
}
- (void)stop:(id)sender;
- (void)tick:(id)sender;
@end

@implementation VantLoopStopper

- (void)stop:(id)sender {
    ++stops;
    if (stopping)
        CFRunLoopStop(CFRunLoopGetCurrent());
}

- (void)tick:(id)sender {
    ++ticks;
}

@end

namespace {

constexpr double farAway = 1.0;
constexpr double soon = 0.5;

class RunLoopStop : public testing::Test {
protected:
    RunLoopStop() {
        stopper->stopping = YES;
        // A source that the loop would wait for.
        input = [[NSPipe alloc] init];
        [[NSNotificationCenter defaultCenter] addObserver:stopper
                                                 selector:@selector(tick:)
                                                     name:NSFileHandleDataAvailableNotification
                                                   object:[input fileHandleForReading]];
        [[input fileHandleForReading] waitForDataInBackgroundAndNotify];
        // What an earlier test has left in the loop.
        [[NSRunLoop currentRunLoop] runUntilDate:[NSDate dateWithTimeIntervalSinceNow:0.05]];
    }
    ~RunLoopStop() override {
        [[NSNotificationCenter defaultCenter] removeObserver:stopper];
        [NSObject cancelPreviousPerformRequestsWithTarget:stopper];
        [stopper release];
        [input release];
    }

    /// Seconds until one run of the loop gives control back.
    static double run() {
        NSDate *start = [NSDate date];
        EXPECT_TRUE([[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode
                                             beforeDate:[NSDate dateWithTimeIntervalSinceNow:farAway]]);
        return -[start timeIntervalSinceNow];
    }
    /// A timer that the next run finds due at its start. One that is due a moment later would limit that run's wait,
    /// and now and then fire as it ends.
    void fireAtOnce() {
        NSTimer *timer = [[[NSTimer alloc] initWithFireDate:[NSDate dateWithTimeIntervalSinceNow:-1.0]
                                                   interval:0.0
                                                     target:stopper
                                                   selector:@selector(stop:)
                                                   userInfo:nil
                                                    repeats:NO] autorelease];
        [[NSRunLoop currentRunLoop] addTimer:timer forMode:NSDefaultRunLoopMode];
    }

    VantLoopStopper *stopper = [[VantLoopStopper alloc] init];
    NSPipe *input;
};

TEST_F(RunLoopStop, EndsARunWhoseTimerStopsIt) {
    fireAtOnce();
    EXPECT_LT(run(), soon);
    EXPECT_EQ(stopper->stops, 1);
}

TEST_F(RunLoopStop, IsWhatEndsIt) {
    stopper->stopping = NO;
    fireAtOnce();
    EXPECT_GE(run(), soon) << "the run ends without being stopped: the tests here show nothing";
    EXPECT_EQ(stopper->stops, 1);
}

TEST_F(RunLoopStop, EndsARunThatFirstSendsAWaitingMessage) {
    [[NSRunLoop currentRunLoop] performSelector:@selector(stop:)
                                         target:stopper
                                       argument:nil
                                          order:0
                                          modes:@[ NSDefaultRunLoopMode ]];
    EXPECT_LT(run(), soon);
    EXPECT_EQ(stopper->stops, 1);
}

TEST_F(RunLoopStop, DoesNothingOutsideARun) {
    CFRunLoopStop(CFRunLoopGetCurrent());
    EXPECT_GE(run(), soon);
}

TEST_F(RunLoopStop, LeavesLaterRunsAlone) {
    fireAtOnce();
    EXPECT_LT(run(), soon);
    double longest = 0;
    for (int i = 0; i < 4; ++i)
        longest = std::max(longest, run());
    EXPECT_GE(longest, soon);
}

TEST_F(RunLoopStop, LetsTheLoopGoOnWithEverythingElse) {
    for (int i = 0; i < 20; ++i)
        fireAtOnce();
    NSTimer *ticking = [NSTimer scheduledTimerWithTimeInterval:0.01
                                                        target:stopper
                                                      selector:@selector(tick:)
                                                      userInfo:nil
                                                       repeats:YES];
    [[NSRunLoop currentRunLoop] runUntilDate:[NSDate dateWithTimeIntervalSinceNow:1.0]];
    [ticking invalidate];
    EXPECT_EQ(stopper->stops, 20);
    EXPECT_GE(stopper->ticks, 10);
}

} // namespace
