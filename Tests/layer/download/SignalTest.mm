#import "DownloadFixture.h"
#include "SignalStorm.hpp"

namespace vant::test {

using namespace std::chrono_literals;
using UrlDownloadSignals = DownloadTest;

TEST_F(UrlDownloadSignals, DoNotEndADownload) {
    const SignalStorm storm;
    const int before = SignalStorm::handled();
    server.serve("/fast", HttpReply{.patternLength = 50'000'000});
    server.serve("/slow", HttpReply{.body = pattern(10'000), .pieceDelay = 5ms, .pieceLength = 200});
    DownloadRecorder *slow = [[[DownloadRecorder alloc] init] autorelease];
    [startRequest(request(server.url("/slow")), slow) setDestination:path(@"slow") allowOverwrite:YES];
    fetch(server.url("/fast"));
    EXPECT_TRUE(runUntil([&] { return [slow done]; }));
    EXPECT_EQ(text([recorder story]), "begin response create data finish") << errorCode();
    EXPECT_EQ([recorder received], 50'000'000U);
    EXPECT_EQ(text([slow story]), "begin response create data finish");
    EXPECT_EQ([contents(@"slow") length], 10'000U);
    EXPECT_GT(SignalStorm::handled(), before + 100);
}

TEST_F(UrlDownloadSignals, DoNotEndTheReadingOfALocalFile) {
    put(@"source", pattern(20'000'000));
    const SignalStorm storm;
    fetch("file://" + text(path(@"source")));
    EXPECT_EQ(text([recorder story]), "begin response create data finish") << errorCode();
    EXPECT_EQ([recorder received], 20'000'000U);
}

TEST_F(UrlDownloadSignals, DoNotDisturbALookUp) {
    const SignalStorm storm;
    server.serve("/a", HttpReply{.body = "x"});
    fetch("http://localhost:" + std::to_string(server.port()) + "/a");
    EXPECT_EQ(text([recorder story]), "begin response create data finish") << errorCode();
}

TEST_F(UrlDownloadSignals, DoNotMakeATimeOutEarlyOrLate) {
    const SignalStorm storm;
    server.serve("/a", HttpReply{.body = pattern(1000), .fault = Fault::stall, .faultAfter = 500});
    NSDate *start = [NSDate date];
    [startRequest(request(server.url("/a"), 0.5), recorder) setDestination:path(@"file") allowOverwrite:YES];
    [NSThread sleepForTimeInterval:0.1];
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }, 5)) << text([recorder story]);
    EXPECT_EQ(errorCode(), -1001);
    EXPECT_GE(-[start timeIntervalSinceNow], 0.49);
}

} // namespace vant::test
