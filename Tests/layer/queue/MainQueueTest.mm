#include <dispatch/dispatch.h>

#import <AppKit/AppKit.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <vector>

namespace {

/// Queues a lambda on the main queue.
void queueWork(std::function<void()> work) {
    dispatch_async_f(dispatch_get_main_queue(), new std::function<void()>(std::move(work)), [](void *context) {
        const std::unique_ptr<std::function<void()>> taken(static_cast<std::function<void()> *>(context));
        (*taken)();
    });
}

bool runUntil(const std::function<bool()> &condition, NSString *mode = NSDefaultRunLoopMode, double seconds = 10) {
    NSDate *end = [NSDate dateWithTimeIntervalSinceNow:seconds];
    NSRunLoop *loop = [NSRunLoop currentRunLoop];
    while (!condition() && [end timeIntervalSinceNow] > 0) {
        @autoreleasepool {
            if (![loop runMode:mode beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.05]])
                std::this_thread::yield();
        }
    }
    return condition();
}

TEST(MainQueue, IsOneAndTheSame) {
    EXPECT_NE(dispatch_get_main_queue(), nullptr);
    EXPECT_EQ(dispatch_get_main_queue(), dispatch_get_main_queue());
}

TEST(MainQueue, CallReturnsBeforeTheWorkRuns) {
    bool done = false;
    queueWork([&] { done = true; });
    EXPECT_FALSE(done);
    EXPECT_TRUE(runUntil([&] { return done; }));
}

TEST(MainQueue, WorkOfAnotherThreadRunsOnTheMainThread) {
    std::thread::id ranOn;
    std::thread([&] { queueWork([&] { ranOn = std::this_thread::get_id(); }); }).join();
    EXPECT_TRUE(runUntil([&] { return ranOn != std::thread::id{}; }));
    EXPECT_EQ(ranOn, std::this_thread::get_id());
}

TEST(MainQueue, WorkRunsInTheOrderOfItsThread) {
    constexpr int perThread = 20'000;
    std::vector<int> seen[2];
    std::vector<std::thread> threads;
    for (auto &list : seen)
        threads.emplace_back([&list] {
            for (int i = 0; i < perThread; ++i)
                queueWork([&list, i] { list.push_back(i); });
        });
    EXPECT_TRUE(runUntil([&] { return seen[0].size() + seen[1].size() == std::size_t{2} * perThread; },
                         NSDefaultRunLoopMode, 60));
    for (std::thread &thread : threads)
        thread.join();
    for (const auto &list : seen)
        EXPECT_TRUE(std::ranges::is_sorted(list));
}

TEST(MainQueue, IsServedInEveryModeOfTheApplication) {
    for (NSString *mode in
         [NSArray arrayWithObjects:NSDefaultRunLoopMode, NSEventTrackingRunLoopMode, NSModalPanelRunLoopMode, nil]) {
        bool done = false;
        std::thread([&] { queueWork([&] { done = true; }); }).join();
        EXPECT_TRUE(runUntil([&] { return done; }, mode)) << [mode UTF8String];
        bool own = false;
        queueWork([&] { own = true; });
        EXPECT_TRUE(runUntil([&] { return own; }, mode)) << "from the main thread, " << [mode UTF8String];
    }
}

TEST(MainQueue, AWaitingRunLoopIsWokenAtOnce) {
    bool done = false;
    std::thread later([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        queueWork([&] { done = true; });
    });
    NSDate *start = [NSDate date];
    while (!done && -[start timeIntervalSinceNow] < 10)
        [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate dateWithTimeIntervalSinceNow:10]];
    later.join();
    EXPECT_TRUE(done);
    EXPECT_LT(-[start timeIntervalSinceNow], 3.0);
}

TEST(MainQueue, WorkQueuedByWorkRunsLater) {
    std::vector<int> order;
    queueWork([&] {
        queueWork([&] { order.push_back(3); });
        order.push_back(1);
    });
    queueWork([&] { order.push_back(2); });
    EXPECT_TRUE(runUntil([&] { return order.size() == 3; }));
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
}

TEST(MainQueue, WorkThatRunsARunLoopHoldsBackWhatStandsBehindIt) {
    std::vector<int> order;
    queueWork([&] {
        EXPECT_FALSE(runUntil([&] { return !order.empty(); }, NSDefaultRunLoopMode, 0.2));
        order.push_back(1);
    });
    queueWork([&] { order.push_back(2); });
    EXPECT_TRUE(runUntil([&] { return order.size() == 2; }));
    EXPECT_EQ(order, (std::vector<int>{1, 2}));
}

TEST(MainQueue, WorkAfterAnExceptionStillRuns) {
    std::vector<int> order;
    queueWork([] { [NSException raise:@"VantTest" format:@"raised by work"]; });
    queueWork([&] { order.push_back(1); });
    queueWork([&] { order.push_back(2); });
    for (int tries = 0; tries < 10 && order.size() < 2; ++tries) {
        @try {
            (void)runUntil([&] { return order.size() == 2; }, NSDefaultRunLoopMode, 1);
        } @catch (NSException *exception) {
            EXPECT_STREQ([[exception name] UTF8String], "VantTest");
        }
    }
    EXPECT_EQ(order, (std::vector<int>{1, 2}));
}

} // namespace

/// Tells when it is gone.
@interface VantMortal : NSObject {
    bool *gone;
}
- (id)initWithFlag:(bool *)flag;
@end

@implementation VantMortal
- (id)initWithFlag:(bool *)flag {
    if ((self = [super init]))
        gone = flag;
    return self;
}
- (void)dealloc {
    *gone = true;
    [super dealloc];
}
@end

namespace {

TEST(MainQueue, EachPieceOfWorkHasAPoolOfItsOwn) {
    bool gone = false;
    bool goneBeforeTheNext = false;
    bool done = false;
    queueWork([&] { [[[VantMortal alloc] initWithFlag:&gone] autorelease]; });
    queueWork([&] {
        goneBeforeTheNext = gone;
        done = true;
    });
    EXPECT_TRUE(runUntil([&] { return done; }));
    EXPECT_TRUE(goneBeforeTheNext);
}

TEST(MainQueue, AHundredThousandCallsTakeNoTimeToSpeakOf) {
    constexpr int calls = 100'000;
    std::atomic<int> ran = 0;
    NSDate *start = [NSDate date];
    std::thread producer([&] {
        for (int i = 0; i < calls; ++i)
            queueWork([&] { ++ran; });
    });
    EXPECT_TRUE(runUntil([&] { return ran == calls; }, NSDefaultRunLoopMode, 60));
    producer.join();
    EXPECT_LT(-[start timeIntervalSinceNow], 10.0);
}

} // namespace
