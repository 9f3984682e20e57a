#import "DownloadFixture.h"
#import <AppKit/AppKit.h>

#include "ProcessorTime.hpp"
#include <netinet/in.h>
#include <sched.h>
#include <sys/socket.h>

/// A thread whose body is a lambda.
@interface LambdaThread : NSThread {
@public
    std::function<void()> body;
}
@end

@implementation LambdaThread
- (void)main {
    @autoreleasepool {
        body();
    }
}
@end

/// Counts the firings of a timer.
@interface TimerCounter : NSObject {
@public
    int count;
}
- (void)fire:(NSTimer *)timer;
@end

@implementation TimerCounter
- (void)fire:(NSTimer *)timer {
    count++;
}
@end

/// A delegate that runs the run loop from within its first data message, until another download has ended.
@interface NestingRecorder : DownloadRecorder {
@public
    DownloadRecorder *other;
    BOOL nested;
}
@end

@implementation NestingRecorder
- (void)download:(NSURLDownload *)download didReceiveDataOfLength:(NSUInteger)length {
    [super download:download didReceiveDataOfLength:length];
    if (nested)
        return;
    nested = YES;
    EXPECT_TRUE(vant::test::runUntil([&] { return [other done]; }));
}
@end

namespace vant::test {

using namespace std::chrono_literals;
using UrlDownloadLoop = DownloadTest;

namespace {

void onThread(std::function<void()> body) {
    LambdaThread *thread = [[[LambdaThread alloc] init] autorelease];
    thread->body = std::move(body);
    [thread start];
    while (![thread isFinished])
        [NSThread sleepForTimeInterval:0.002];
}

/// This process's connections to a port of its own, seen from the end that connected.
int connectionsTo(int port) {
    int count = 0;
    for (int descriptor = 0; descriptor < 1024; ++descriptor) {
        sockaddr_in peer{};
        socklen_t length = sizeof peer;
        if (::getpeername(descriptor, reinterpret_cast<sockaddr *>(&peer), &length) == 0 &&
            peer.sin_family == AF_INET && ntohs(peer.sin_port) == port)
            ++count;
    }
    return count;
}

} // namespace

TEST_F(UrlDownloadLoop, TellsOnTheStartingThread) {
    server.serve("/a", HttpReply{.body = pattern(10'000)});
    fetch(server.url("/a"));
    for (NSThread *thread in recorder->threads)
        EXPECT_EQ(thread, [NSThread currentThread]);
}

TEST_F(UrlDownloadLoop, TellsOnASecondThreadThatRunsItsOwnLoop) {
    server.serve("/a", HttpReply{.body = pattern(10'000)});
    onThread([&] {
        fetch(server.url("/a"));
        for (NSThread *thread in recorder->threads)
            EXPECT_EQ(thread, [NSThread currentThread]);
    });
    EXPECT_EQ(text([recorder story]), "begin response create data finish");
}

TEST_F(UrlDownloadLoop, ThreadThatEndsTakesItsDownloadsAlong) {
    server.serve("/a", HttpReply{.body = pattern(1000), .fault = Fault::stall, .faultAfter = 300});
    const auto before = openDescriptors();
    onThread([&] {
        start(server.url("/a"));
        ASSERT_TRUE(runUntil([&] { return [recorder->pieces count] > 0; }));
    });
    // A thread says that it is finished before it gives its objects up.
    EXPECT_TRUE(runUntil([&] { return !exists(@"file"); }));
    EXPECT_FALSE([recorder done]);
    // The server's end of the connection is left.
    EXPECT_TRUE(runUntil([&] { return openDescriptors() <= before + 1; })) << openDescriptors() << " after " << before;
}

TEST_F(UrlDownloadLoop, RunsInTheModesOfPanelsAndMenus) {
    server.serve("/a", HttpReply{.body = pattern(10'000)});
    for (NSString *mode in @[ NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ]) {
        [recorder release];
        recorder = [[DownloadRecorder alloc] init];
        start(server.url("/a"));
        NSDate *limit = [NSDate dateWithTimeIntervalSinceNow:10];
        while (![recorder done] && [limit timeIntervalSinceNow] > 0)
            [[NSRunLoop currentRunLoop] runMode:mode beforeDate:limit];
        EXPECT_EQ(text([recorder story]), "begin response create data finish") << text(mode);
    }
}

TEST_F(UrlDownloadLoop, LeavesTheRunLoopWithoutSourcesWhenIdle) {
    server.serve("/a", HttpReply{.body = "x"});
    onThread([&] {
        fetch(server.url("/a"));
        EXPECT_FALSE([[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode
                                              beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.5]]);
    });
}

TEST_F(UrlDownloadLoop, ThirtyDownloadsRunAtOnce) {
    constexpr int count = 30;
    NSMutableArray *recorders = [NSMutableArray array];
    for (int i = 0; i < count; ++i) {
        const auto target = "/" + std::to_string(i);
        server.serve(target, HttpReply{.body = pattern(20'000 + static_cast<std::size_t>(i)), .delay = 400ms});
        [recorders addObject:[[[DownloadRecorder alloc] init] autorelease]];
        [startRequest(request(server.url(target)), [recorders lastObject])
            setDestination:path([NSString stringWithFormat:@"%d", i])
            allowOverwrite:YES];
    }
    EXPECT_TRUE(runUntil([&] {
        for (DownloadRecorder *each in recorders)
            if (![each done])
                return false;
        return true;
    }));
    EXPECT_EQ(server.mostAtOnce(), count);
    for (int i = 0; i < count; ++i)
        EXPECT_EQ([contents([NSString stringWithFormat:@"%d", i]) length], 20'000U + static_cast<unsigned>(i));
}

TEST_F(UrlDownloadLoop, DownloadsBeyondThoseAtOnceWaitWithoutTimingOut) {
    constexpr int count = 40;
    server.serve("/a", HttpReply{.body = "x", .delay = 600ms});
    for (int i = 0; i < count; ++i)
        [startRequest(request(server.url("/a"), 0.9), recorder) setDestination:path(@"file") allowOverwrite:NO];
    const auto finished = [&] {
        NSPredicate *end = [NSPredicate predicateWithFormat:@"SELF == 'finish'"];
        return [[recorder->messages filteredArrayUsingPredicate:end] count];
    };
    EXPECT_TRUE(runUntil([&] { return finished() == count; })) << finished() << " " << errorCode();
    EXPECT_EQ(server.mostAtOnce(), 32);
    EXPECT_EQ(server.connections(), 32U);
}

TEST_F(UrlDownloadLoop, CancelMakesRoomForTheNext) {
    server.serve("/stall", HttpReply{.body = pattern(100), .fault = Fault::stall, .faultAfter = 50});
    server.serve("/a", HttpReply{.body = "x"});
    NSMutableArray *stalled = [NSMutableArray array];
    for (int i = 0; i < 32; ++i)
        [stalled addObject:startRequest(request(server.url("/stall")), nil)];
    start(server.url("/a"));
    runFor(0.1);
    EXPECT_FALSE([recorder done]);
    [[stalled lastObject] cancel];
    EXPECT_TRUE(runUntil([&] { return [recorder done]; }));
    [stalled makeObjectsPerformSelector:@selector(cancel)];
}

TEST_F(UrlDownloadLoop, OneDelegateServesManyDownloads) {
    server.serve("/a", HttpReply{.body = "x"});
    for (NSString *file in @[ @"1", @"2", @"3" ])
        start(server.url("/a"), file);
    EXPECT_TRUE(runUntil([&] {
        return [[recorder->messages filteredArrayUsingPredicate:[NSPredicate predicateWithFormat:@"SELF == 'finish'"]]
                   count] == 3;
    }));
}

TEST_F(UrlDownloadLoop, UsesOneConnectionForDownloadsOneAfterAnother) {
    server.serve("/long", HttpReply{.body = pattern(1000), .fault = Fault::stall, .faultAfter = 500});
    server.serve("/a", HttpReply{.body = pattern(5000)});
    NSURLDownload *running = startRequest(request(server.url("/long")), nil);
    for (int i = 0; i < 5; ++i) {
        [recorder release];
        recorder = [[DownloadRecorder alloc] init];
        fetch(server.url("/a"));
    }
    EXPECT_EQ(server.connections(), 2U);
    [running cancel];
}

TEST_F(UrlDownloadLoop, ClosesItsConnectionsWhenTheLastDownloadEnds) {
    server.serve("/a", HttpReply{.body = pattern(5000), .pieceDelay = 10ms, .pieceLength = 1000});
    for (NSString *file in @[ @"1", @"2", @"3" ])
        start(server.url("/a"), file);
    ASSERT_TRUE(runUntil([&] { return [recorder received] > 0; }));
    EXPECT_EQ(connectionsTo(server.port()), 3);
    ASSERT_TRUE(runUntil([&] { return [recorder received] == 15'000; }));
    EXPECT_TRUE(runUntil([&] { return connectionsTo(server.port()) == 0; }));
    [recorder release];
    recorder = [[DownloadRecorder alloc] init];
    fetch(server.url("/a"), @"4");
    EXPECT_EQ([contents(@"4") length], 5000U) << "a later download finds its way again";
}

TEST_F(UrlDownloadLoop, ClosesItsConnectionsWhenTheLastDownloadIsCancelled) {
    server.serve("/a", HttpReply{.body = pattern(1000), .fault = Fault::stall, .faultAfter = 500});
    NSURLDownload *download = start(server.url("/a"));
    ASSERT_TRUE(runUntil([&] { return [recorder received] == 500; }));
    [download cancel];
    EXPECT_EQ(connectionsTo(server.port()), 0);
}

TEST_F(UrlDownloadLoop, DelegateMayRunTheLoopFromWithinAMessage) {
    server.serve("/first", HttpReply{.body = pattern(400), .pieceDelay = 20ms, .pieceLength = 50});
    server.serve("/second", HttpReply{.body = pattern(400), .pieceDelay = 30ms, .pieceLength = 50});
    NestingRecorder *nesting = [[[NestingRecorder alloc] init] autorelease];
    nesting->other = recorder;
    [startRequest(request(server.url("/first")), nesting) setDestination:path(@"1") allowOverwrite:YES];
    start(server.url("/second"), @"2");
    EXPECT_TRUE(runUntil([&] { return [recorder done] && [nesting done]; }));
    EXPECT_EQ(text([nesting story]), "begin response create data finish");
    EXPECT_EQ(text([recorder story]), "begin response create data finish");
    EXPECT_EQ([contents(@"1") length], 400U);
}

TEST_F(UrlDownloadLoop, DelegateMayStartADownloadFromWithinTheEnd) {
    server.serve("/a", HttpReply{.body = "x"});
    start("http://127.0.0.1:" + std::to_string(closedPort()) + "/a", @"1");
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    DownloadRecorder *again = [[[DownloadRecorder alloc] init] autorelease];
    [startRequest(request(server.url("/a")), again) setDestination:path(@"2") allowOverwrite:YES];
    EXPECT_TRUE(runUntil([&] { return [again done]; }));
}

TEST_F(UrlDownloadLoop, StalledDownloadsCostNoTime) {
    server.serve("/a", HttpReply{.body = pattern(1000), .fault = Fault::stall, .faultAfter = 500});
    for (int i = 0; i < 10; ++i)
        start(server.url("/a"), [NSString stringWithFormat:@"%d", i]);
    startRequest(request(server.url("/a")), recorder); // and one that waits for a destination
    ASSERT_TRUE(runUntil([&] { return [recorder received] == 5000; }));
    runFor(0.1);
    const double before = threadSeconds();
    runFor(0.5);
    EXPECT_LT(threadSeconds() - before, 0.05);
}

TEST_F(UrlDownloadLoop, TimersFireWhileAFastServerKeepsItBusy) {
    server.serve("/a", HttpReply{.patternLength = 150'000'000});
    TimerCounter *counter = [[[TimerCounter alloc] init] autorelease];
    [NSTimer scheduledTimerWithTimeInterval:0.02 target:counter selector:@selector(fire:) userInfo:nil repeats:YES];
    NSDate *start = [NSDate date];
    for (NSString *file in @[ @"1", @"2" ])
        this->start(server.url("/a"), file);
    ASSERT_TRUE(runUntil([&] { return [recorder received] == 300'000'000; }, 30));
    const double due = -[start timeIntervalSinceNow] / 0.02;
    EXPECT_GT(counter->count, due / 4) << "of " << due;
}

TEST_F(UrlDownloadLoop, NetworkThatIsNotThereIsNotConnected) {
    onThread([&] {
        if (::unshare(CLONE_NEWNET) != 0)
            GTEST_SKIP() << "a thread without a network can only be made by root";
        fetch("http://192.0.2.1/a");
    });
    if (!IsSkipped())
        EXPECT_EQ(errorCode(), -1009);
}

} // namespace vant::test
