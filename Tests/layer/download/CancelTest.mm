#import "DownloadFixture.h"

/// A delegate that tells when it goes.
@interface MortalDelegate : NSObject {
@public
    BOOL *gone;
    BOOL ended;
}
@end

@implementation MortalDelegate
- (void)downloadDidFinish:(NSURLDownload *)download {
    ended = YES;
}
- (void)dealloc {
    *gone = YES;
    [super dealloc];
}
@end

namespace vant::test {

using namespace std::chrono_literals;
using UrlDownloadCancel = DownloadTest;

TEST_F(UrlDownloadCancel, EndsTheMessagesAtEveryStageAndRemovesTheFile) {
    server.serve("/a", HttpReply{.body = pattern(5000), .pieceDelay = 10ms, .pieceLength = 500});
    server.serve("/hop", HttpReply{.status = 302, .fields = {{"Location", "/a"}}, .body = "elsewhere"});
    const struct {
        NSString *stage;
        const char *story;
    } rows[] = {
        {@"begin", "begin"},
        {@"redirect", "begin redirect"},
        {@"response", "begin redirect response"},
        {@"decide", "begin redirect response decide"},
        {@"create", "begin redirect response decide create"},
        {@"data", "begin redirect response decide create data"},
    };
    for (const auto &row : rows) {
        [recorder release];
        recorder = [[DownloadRecorder alloc] init];
        recorder->cancelAt = [row.stage copy];
        recorder->decision = [path(@"file") copy];
        startRequest(request(server.url("/hop")), recorder);
        ASSERT_TRUE(runUntil([&] { return [recorder->messages containsObject:row.stage]; })) << row.story;
        runFor(0.12);
        EXPECT_EQ(text([recorder story]), row.story);
        EXPECT_FALSE(exists(@"file")) << row.story;
    }
}

TEST_F(UrlDownloadCancel, RightAfterCreationNothingIsTold) {
    server.serve("/a", HttpReply{.body = "x"});
    [start(server.url("/a")) cancel];
    runFor(0.1);
    EXPECT_EQ([recorder->messages count], 0U);
    EXPECT_FALSE(exists(@"file"));
}

TEST_F(UrlDownloadCancel, AfterTheEndTheFileStays) {
    server.serve("/a", HttpReply{.body = "x"});
    NSURLDownload *download = start(server.url("/a"));
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    [download cancel];
    [download cancel];
    EXPECT_TRUE(exists(@"file"));
}

TEST_F(UrlDownloadCancel, InsideTheEndsMessageIsHarmless) {
    server.serve("/a", HttpReply{.body = "x"});
    recorder->cancelAt = @"finish";
    fetch(server.url("/a"));
    EXPECT_TRUE(exists(@"file"));
}

TEST_F(UrlDownloadCancel, LeavesOtherDownloadsAlone) {
    server.serve("/a", HttpReply{.body = pattern(400), .pieceDelay = 20ms, .pieceLength = 40});
    DownloadRecorder *other = [[[DownloadRecorder alloc] init] autorelease];
    recorder->cancelAt = @"data";
    start(server.url("/a"), @"mine");
    [startRequest(request(server.url("/a")), other) setDestination:path(@"other") allowOverwrite:YES];
    ASSERT_TRUE(runUntil([&] { return [other done]; }));
    EXPECT_EQ([contents(@"other") length], 400U);
    EXPECT_FALSE(exists(@"mine"));
}

TEST_F(UrlDownloadCancel, DuringANameLookUpDoesNotWaitForIt) {
    NSURLDownload *download = start("http://slow-to-resolve.invalid/a");
    runFor(0.1);
    NSDate *before = [NSDate date];
    [download cancel];
    EXPECT_LT(-[before timeIntervalSinceNow], 1.0);
    EXPECT_EQ(text([recorder story]), "begin");
}

TEST_F(UrlDownloadCancel, FromAnotherThreadEndsTheMessages) {
    server.serve("/a", HttpReply{.body = pattern(4000), .pieceDelay = 10ms, .pieceLength = 10});
    NSURLDownload *download = start(server.url("/a"));
    ASSERT_TRUE(runUntil([&] { return recorder->created != nil; }));
    [NSThread detachNewThreadSelector:@selector(cancel) toTarget:download withObject:nil];
    EXPECT_TRUE(runUntil([&] { return !exists(@"file"); }));
    EXPECT_FALSE([recorder done]);
}

TEST_F(UrlDownloadCancel, LetsGoOfTheDelegate) {
    server.serve("/a", HttpReply{.body = "x", .delay = 5s});
    BOOL gone = NO;
    @autoreleasepool {
        MortalDelegate *delegate = [[MortalDelegate alloc] init];
        delegate->gone = &gone;
        NSURLDownload *download = startRequest(request(server.url("/a")), delegate);
        [delegate release];
        EXPECT_FALSE(gone);
        [download cancel];
    }
    EXPECT_TRUE(gone);
}

TEST_F(UrlDownloadCancel, DelegateLivesUntilTheEndAndNoLonger) {
    server.serve("/a", HttpReply{.body = "x"});
    BOOL gone = NO;
    @autoreleasepool {
        MortalDelegate *delegate = [[MortalDelegate alloc] init];
        delegate->gone = &gone;
        [startRequest(request(server.url("/a")), delegate) setDestination:path(@"file") allowOverwrite:YES];
        [delegate release];
    }
    EXPECT_FALSE(gone);
    EXPECT_TRUE(runUntil([&] { return gone; }));
    EXPECT_TRUE(exists(@"file"));
}

TEST_F(UrlDownloadCancel, DownloadKeepsItselfAliveWhileItRuns) {
    server.serve("/a", HttpReply{.body = "x"});
    @autoreleasepool {
        start(server.url("/a"));
    }
    EXPECT_TRUE(runUntil([&] { return [recorder done]; }));
}

} // namespace vant::test
