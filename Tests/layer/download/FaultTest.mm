#import "DownloadFixture.h"

namespace vant::test {

using namespace std::chrono_literals;
using UrlDownloadFault = DownloadTest;

namespace {

/// A host name that no look-up can be made for: one of its labels is longer than the name system allows.
const std::string unresolvable = std::string(70, 'a') + ".invalid";

} // namespace

TEST_F(UrlDownloadFault, RefusedConnectionIsCannotConnect) {
    fetch("http://127.0.0.1:" + std::to_string(closedPort()) + "/a");
    EXPECT_EQ(text([recorder story]), "begin fail");
    EXPECT_EQ(errorCode(), -1004);
}

TEST_F(UrlDownloadFault, NameThatDoesNotResolveIsCannotFindHost) {
    fetch("http://" + unresolvable + "/a");
    EXPECT_EQ(text([recorder story]), "begin fail");
    EXPECT_EQ(errorCode(), -1003);
}

TEST_F(UrlDownloadFault, AddressesThatCannotBeFetchedAreTold) {
    const struct {
        const char *address;
        NSInteger code;
    } rows[] = {
        {"gopher://127.0.0.1/a", -1002},
        {"mailto:someone", -1002},
        {"a/relative/path", -1002},
        {"", -1000},
        {"http://", -1000},
    };
    for (const auto &row : rows) {
        [recorder release];
        recorder = [[DownloadRecorder alloc] init];
        fetch(row.address);
        EXPECT_EQ(text([recorder story]), "begin fail") << row.address;
        EXPECT_EQ(errorCode(), row.code) << row.address;
    }
}

TEST_F(UrlDownloadFault, RequestWithoutAnAddressIsABadAddress) {
    startRequest([[[NSURLRequest alloc] init] autorelease], recorder);
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    EXPECT_EQ(errorCode(), -1000);
}

TEST_F(UrlDownloadFault, NoRequestIsABadAddress) {
    startRequest(nil, recorder);
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    EXPECT_EQ(errorCode(), -1000);
}

TEST_F(UrlDownloadFault, ErrorNamesTheDomainAndTheAddress) {
    const auto address = "http://127.0.0.1:" + std::to_string(closedPort()) + "/a%20b";
    fetch(address);
    EXPECT_EQ(text([recorder->error domain]), text(NSURLErrorDomain));
    NSDictionary *information = [recorder->error userInfo];
    EXPECT_EQ(text([information objectForKey:NSErrorFailingURLStringKey]), address);
    EXPECT_EQ(text([[information objectForKey:@"NSErrorFailingURLKey"] absoluteString]), address);
}

TEST_F(UrlDownloadFault, ResetAfterHalfTheBodyLosesTheConnectionAndRemovesTheFile) {
    server.serve("/a",
                 HttpReply{.body = pattern(200'000), .fault = Fault::reset, .faultAfter = 100'000, .pieceDelay = 20ms});
    fetch(server.url("/a"));
    EXPECT_EQ(text([recorder story]), "begin response create data fail");
    EXPECT_EQ(errorCode(), -1005);
    EXPECT_FALSE(exists(@"file"));
}

TEST_F(UrlDownloadFault, BodyShorterThanAnnouncedLosesTheConnection) {
    server.serve("/a",
                 HttpReply{.body = pattern(1000), .announcedLength = 2000, .fault = Fault::close, .faultAfter = 1000});
    fetch(server.url("/a"));
    EXPECT_EQ(errorCode(), -1005);
    EXPECT_EQ([recorder->response expectedContentLength], 2000);
    EXPECT_EQ([recorder received], 1000U);
    EXPECT_FALSE(exists(@"file"));
}

TEST_F(UrlDownloadFault, ChunkedBodyWithoutItsEndLosesTheConnection) {
    server.serve(
        "/a", HttpReply{.body = pattern(9000), .framing = Framing::chunked, .fault = Fault::close, .faultAfter = 5000});
    fetch(server.url("/a"));
    EXPECT_EQ(errorCode(), -1005);
}

TEST_F(UrlDownloadFault, BodyLongerThanAnnouncedEndsWhereItWasAnnounced) {
    server.serve("/a", HttpReply{.body = pattern(2000), .announcedLength = 1000});
    fetch(server.url("/a"));
    EXPECT_EQ(text([recorder story]), "begin response create data finish");
    EXPECT_EQ([contents(@"file") length], 1000U);
}

TEST_F(UrlDownloadFault, ConnectionClosedWithoutAnAnswerIsLost) {
    server.serve("/a", HttpReply{.fault = Fault::reset, .rawHeader = "H"});
    fetch(server.url("/a"));
    EXPECT_EQ(errorCode(), -1005);
}

TEST_F(UrlDownloadFault, AnswerThatIsNoHttpIsABadServerResponse) {
    server.serve("/a", HttpReply{.body = "more of it", .rawHeader = "220 welcome to something else entirely\r\n"});
    fetch(server.url("/a"));
    EXPECT_EQ(text([recorder story]), "begin fail");
    EXPECT_EQ(errorCode(), -1011);
}

TEST_F(UrlDownloadFault, DamagedGzipBodyCannotBeDecoded) {
    auto body = "\x1f\x8b\x08" + std::string(400, '\xee');
    server.serve("/a", HttpReply{.fields = {{"Content-Encoding", "gzip"}}, .body = body});
    fetch(server.url("/a"));
    EXPECT_EQ(errorCode(), -1015);
    EXPECT_FALSE(exists(@"file"));
}

TEST_F(UrlDownloadFault, StallInTheBodyTimesOutAfterTheRequestsTime) {
    server.serve("/a", HttpReply{.body = pattern(1000), .fault = Fault::stall, .faultAfter = 500});
    NSDate *start = [NSDate date];
    NSURLDownload *download = startRequest(request(server.url("/a"), 0.4), recorder);
    [download setDestination:path(@"file") allowOverwrite:YES];
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    EXPECT_EQ(text([recorder story]), "begin response create data fail");
    EXPECT_EQ(errorCode(), -1001);
    EXPECT_GE(-[start timeIntervalSinceNow], 0.39);
    EXPECT_LT(-[start timeIntervalSinceNow], 3.0);
    EXPECT_FALSE(exists(@"file"));
}

TEST_F(UrlDownloadFault, SilenceBeforeTheAnswerTimesOut) {
    server.serve("/a", HttpReply{.body = "late", .delay = 10s});
    startRequest(request(server.url("/a"), 0.3), recorder);
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    EXPECT_EQ(text([recorder story]), "begin fail");
    EXPECT_EQ(errorCode(), -1001);
}

TEST_F(UrlDownloadFault, NameLookUpThatTakesTooLongTimesOut) {
    NSDate *start = [NSDate date];
    startRequest(request("http://slow-to-resolve.invalid/a", 0.3), recorder);
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    EXPECT_EQ(errorCode(), -1001);
    EXPECT_LT(-[start timeIntervalSinceNow], 2.0);
}

TEST_F(UrlDownloadFault, SlowDripLongerThanTheTimeOutFinishes) {
    server.serve("/a", HttpReply{.body = pattern(60), .pieceDelay = 60ms, .pieceLength = 3});
    NSURLDownload *download = startRequest(request(server.url("/a"), 0.4), recorder);
    [download setDestination:path(@"file") allowOverwrite:YES];
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    EXPECT_EQ(text([recorder story]), "begin response create data finish");
}

TEST_F(UrlDownloadFault, ThreadThatWasBusyDoesNotTakeTheServerForStalled) {
    server.serve("/a", HttpReply{.body = pattern(40), .pieceDelay = 50ms, .pieceLength = 2});
    NSURLDownload *download = startRequest(request(server.url("/a"), 0.3), recorder);
    [download setDestination:path(@"file") allowOverwrite:YES];
    ASSERT_TRUE(runUntil([&] { return [recorder->pieces count] > 0; }));
    [NSThread sleepForTimeInterval:0.7];
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    EXPECT_EQ(text([recorder story]), "begin response create data finish");
}

TEST_F(UrlDownloadFault, ThreadThatWasBusyWhileConnectingDoesNotTakeTheServerForStalled) {
    server.serve("/a", HttpReply{.body = "x"});
    NSURLDownload *download = startRequest(request(server.url("/a"), 0.2), recorder);
    [download setDestination:path(@"file") allowOverwrite:YES];
    [NSThread sleepForTimeInterval:0.5];
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    EXPECT_EQ(text([recorder story]), "begin response create data finish");
}

TEST_F(UrlDownloadFault, TellsOneEndAndNothingAfterIt) {
    server.serve("/good", HttpReply{.body = "x"});
    server.serve("/bad", HttpReply{.body = "x", .announcedLength = 9, .fault = Fault::close, .faultAfter = 1});
    for (const char *target : {"/good", "/bad"}) {
        [recorder release];
        recorder = [[DownloadRecorder alloc] init];
        fetch(server.url(target));
        NSString *story = [recorder story];
        runFor(0.1);
        EXPECT_EQ(text([recorder story]), text(story)) << target;
    }
}

TEST_F(UrlDownloadFault, OneFailureLeavesTheOthersAlone) {
    server.serve("/bad", HttpReply{.body = pattern(1000), .fault = Fault::reset, .faultAfter = 300});
    server.serve("/good", HttpReply{.body = pattern(500), .pieceDelay = 20ms, .pieceLength = 50});
    DownloadRecorder *other = [[[DownloadRecorder alloc] init] autorelease];
    start(server.url("/bad"), @"bad");
    [startRequest(request(server.url("/good")), other) setDestination:path(@"good") allowOverwrite:YES];
    ASSERT_TRUE(runUntil([&] { return [recorder done] && [other done]; }));
    EXPECT_EQ(errorCode(), -1005);
    EXPECT_EQ(text([other story]), "begin response create data finish");
    EXPECT_EQ([contents(@"good") length], 500U);
}

TEST_F(UrlDownloadFault, DelegateThatRaisesDoesNotStopTheDownload) {
    for (NSString *stage in @[ @"begin", @"response", @"create", @"data" ]) {
        server.serve("/a", HttpReply{.body = pattern(1000)});
        [recorder release];
        recorder = [[DownloadRecorder alloc] init];
        recorder->raiseAt = [stage copy];
        start(server.url("/a"));
        BOOL raised = NO;
        @try {
            runUntil([&] { return [recorder done]; });
        } @catch (NSException *fault) {
            raised = [[fault name] isEqual:@"DelegateFault"];
        }
        EXPECT_TRUE(runUntil([&] { return [recorder done]; })) << text(stage);
        EXPECT_EQ(text([recorder story]), "begin response create data finish") << text(stage);
        EXPECT_TRUE(raised) << text(stage);
    }
}

} // namespace vant::test
