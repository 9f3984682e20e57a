#import "DownloadFixture.h"
#include "Gzip.hpp"
#include "ProcessorTime.hpp"

#include <filesystem>
#include <sys/mount.h>

namespace vant::test {

using UrlDownloadSlices = DownloadTest;

namespace {

/// The longest time of the CPU that one pass of the run loop may cost, in seconds, whatever a server sends.
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
constexpr double longestStall = 0.200; // each access costs several times as much
#else
constexpr double longestStall = 0.020;
#endif

/// Runs the run loop until the recorder has seen the end; the CPU time of the most expensive pass, in seconds.
double longestPass(DownloadRecorder *recorder) {
    double longest = 0;
    NSDate *limit = [NSDate dateWithTimeIntervalSinceNow:30];
    while (![recorder done] && [limit timeIntervalSinceNow] > 0) {
        @autoreleasepool {
            const double before = threadSeconds();
            [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode
                                     beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.05]];
            longest = std::max(longest, threadSeconds() - before);
        }
    }
    return longest;
}

HttpReply encoded(std::string body) {
    return HttpReply{.fields = {{"Content-Encoding", "gzip"}}, .body = std::move(body)};
}

std::string repeated(const std::string &text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

} // namespace

TEST_F(UrlDownloadSlices, SmallAnswerThatDecodesToALargeOneLeavesTheRunLoopFree) {
    constexpr std::size_t length = 200'000'000;
    server.serve("/a", encoded(gzip(std::string(length, '\0'))));
    start(server.url("/a"));
    EXPECT_LT(longestPass(recorder), longestStall);
    EXPECT_EQ(text([recorder story]), "begin response create data finish");
    EXPECT_EQ([recorder received], length);
}

TEST_F(UrlDownloadSlices, ManyShortStreamsInOneAnswerLeaveTheRunLoopFree) {
    server.serve("/a", encoded(repeated(gzip("x"), 200'000)));
    start(server.url("/a"));
    EXPECT_LT(longestPass(recorder), longestStall);
    EXPECT_EQ([recorder received], 200'000U);
}

TEST_F(UrlDownloadSlices, ChunksOfOneByteLeaveTheRunLoopFree) {
    server.serve("/a", HttpReply{.body = repeated("1\r\nx\r\n", 1'000'000) + "0\r\n\r\n",
                                 .rawHeader = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"});
    start(server.url("/a"));
    EXPECT_LT(longestPass(recorder), longestStall);
    EXPECT_EQ([recorder received], 1'000'000U);
}

TEST_F(UrlDownloadSlices, HeaderWithoutEndIsABadServerResponse) {
    server.serve("/a", HttpReply{.rawHeader = "HTTP/1.1 200 OK\r\n" + repeated("X-Filler: 0123456789\r\n", 200'000)});
    start(server.url("/a"));
    EXPECT_LT(longestPass(recorder), longestStall);
    EXPECT_EQ(text([recorder story]), "begin fail");
    EXPECT_EQ(errorCode(), -1011);
}

TEST_F(UrlDownloadSlices, OtherDownloadsGoOnWhileOneDecodes) {
    // Half a minute of decoding, of which only a moment is used: the server's own pace must not matter.
    server.serve("/large", encoded(repeated(gzip(std::string(100'000'000, '\0')), 40)));
    server.serve("/small", HttpReply{.body = pattern(1000)});
    DownloadRecorder *small = [[[DownloadRecorder alloc] init] autorelease];
    NSURLDownload *large = start(server.url("/large"));
    ASSERT_TRUE(runUntil([&] { return [recorder received] > 0; }));
    [startRequest(request(server.url("/small")), small) setDestination:path(@"small") allowOverwrite:YES];
    ASSERT_TRUE(runUntil([&] { return [small done]; }));
    EXPECT_FALSE([recorder done]);
    [large cancel];
}

TEST_F(UrlDownloadSlices, CancelWhileItDecodesTellsNothingMoreAndRemovesTheFile) {
    server.serve("/a", encoded(gzip(std::string(100'000'000, '\0'))));
    recorder->cancelAt = [@"data" copy];
    start(server.url("/a"));
    ASSERT_TRUE(runUntil([&] { return [recorder->pieces count] > 0; }));
    runFor(0.1);
    EXPECT_EQ(text([recorder story]), "begin response create data");
    EXPECT_EQ([recorder->pieces count], 1U);
    EXPECT_FALSE(exists(@"file"));
}

TEST_F(UrlDownloadSlices, CutEncodingIsFoundAfterWhatCameBeforeIt) {
    const auto whole = gzip(std::string(50'000'000, '\0'));
    server.serve("/a", encoded(whole.substr(0, whole.size() / 2)));
    fetch(server.url("/a"));
    EXPECT_EQ(text([recorder story]), "begin response create data fail");
    EXPECT_EQ(errorCode(), -1015);
}

TEST_F(UrlDownloadSlices, DecodedAnswerLeavesATenthOfTheVolumeFree) {
    std::filesystem::create_directory([path(@"small") UTF8String]);
    if (::mount("none", [path(@"small") UTF8String], "tmpfs", 0, "size=8m") != 0)
        GTEST_SKIP() << "a small file system can only be mounted by root";
    server.serve("/a", encoded(gzip(std::string(50'000'000, '\0'))));
    NSURLDownload *download = start(server.url("/a"), @"small/file");
    [download setDeletesFileUponFailure:NO];
    EXPECT_TRUE(runUntil([&] { return [recorder done]; }));
    EXPECT_EQ(errorCode(), -3003);
    const auto space = std::filesystem::space([path(@"small") UTF8String]);
    EXPECT_GE(space.available, space.capacity / 10);
    EXPECT_LE(space.available, space.capacity / 5) << "it stopped long before it had to";
    EXPECT_EQ(::umount([path(@"small") UTF8String]), 0);
}

} // namespace vant::test
