#import "DownloadFixture.h"

#include "Gzip.hpp"

namespace vant::test {

using UrlDownload = DownloadTest;

TEST_F(UrlDownload, TellsTheMessagesInThePlatformsOrder) {
    server.serve("/a", HttpReply{.body = pattern(100'000)});
    fetch(server.url("/a"));
    EXPECT_EQ(text([recorder story]), "begin response create data finish");
}

TEST_F(UrlDownload, WritesExactlyTheBytesOfTheBody) {
    const auto body = pattern(3'000'017);
    server.serve("/a", HttpReply{.body = body});
    fetch(server.url("/a"));
    NSData *file = contents(@"file");
    EXPECT_EQ(std::string(static_cast<const char *>([file bytes]), [file length]), body);
    EXPECT_EQ([recorder received], body.size());
}

TEST_F(UrlDownload, TellsNothingInsideItsCreation) {
    server.serve("/a", HttpReply{.body = "x"});
    start(server.url("/a"));
    EXPECT_EQ([recorder->messages count], 0U);
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
}

TEST_F(UrlDownload, TellsNothingWhileTheRunLoopDoesNotRun) {
    server.serve("/a", HttpReply{.body = "x"});
    start(server.url("/a"));
    [NSThread sleepForTimeInterval:0.1];
    EXPECT_EQ([recorder->messages count], 0U);
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
}

TEST_F(UrlDownload, GivesTheResponseItsStatusFieldsAndLength) {
    server.serve("/a",
                 HttpReply{.fields = {{"X-Shelf", "upper"}, {"Content-Type", "application/zip"}}, .body = "12345"});
    fetch(server.url("/a"));
    auto *response = (NSHTTPURLResponse *)recorder->response;
    ASSERT_TRUE([response isKindOfClass:[NSHTTPURLResponse class]]);
    EXPECT_EQ([response statusCode], 200);
    EXPECT_EQ([response expectedContentLength], 5);
    EXPECT_EQ(text([[response allHeaderFields] objectForKey:@"X-Shelf"]), "upper");
    EXPECT_EQ(text([response MIMEType]), "application/zip");
    EXPECT_EQ(text([[response URL] absoluteString]), server.url("/a"));
}

TEST_F(UrlDownload, JoinsFieldsThatComeTwice) {
    server.serve("/a", HttpReply{.fields = {{"X-Part", "one"}, {"X-Part", "two"}}, .body = "x"});
    fetch(server.url("/a"));
    EXPECT_EQ(text([[(NSHTTPURLResponse *)recorder->response allHeaderFields] objectForKey:@"X-Part"]), "one, two");
}

TEST_F(UrlDownload, TakesAnHttpErrorForAnAnswer) {
    for (const int status : {404, 500, 403, 503}) {
        const auto target = "/" + std::to_string(status);
        server.serve(target, HttpReply{.status = status, .body = "sorry"});
        [recorder release];
        recorder = [[DownloadRecorder alloc] init];
        fetch(server.url(target));
        EXPECT_EQ(text([recorder story]), "begin response create data finish") << status;
        EXPECT_EQ([(NSHTTPURLResponse *)recorder->response statusCode], status);
        EXPECT_TRUE([contents(@"file") isEqual:[@"sorry" dataUsingEncoding:NSUTF8StringEncoding]]) << status;
    }
}

TEST_F(UrlDownload, SaysThatTheLengthIsUnknownWhenTheConnectionsEndIsTheBodysEnd) {
    server.serve("/a", HttpReply{.body = pattern(70'000), .framing = Framing::close});
    fetch(server.url("/a"));
    EXPECT_EQ([recorder->response expectedContentLength], -1);
    EXPECT_EQ([contents(@"file") length], 70'000U);
}

TEST_F(UrlDownload, SaysThatTheLengthIsUnknownForAChunkedBody) {
    server.serve("/a", HttpReply{.body = pattern(70'000), .framing = Framing::chunked});
    fetch(server.url("/a"));
    EXPECT_EQ([recorder->response expectedContentLength], -1);
    EXPECT_EQ([contents(@"file") length], 70'000U);
    EXPECT_EQ([recorder received], 70'000U);
}

TEST_F(UrlDownload, FinishesAnEmptyFileWithoutADataMessage) {
    server.serve("/a", HttpReply{});
    fetch(server.url("/a"));
    EXPECT_EQ(text([recorder story]), "begin response create finish");
    EXPECT_TRUE(exists(@"file"));
    EXPECT_EQ([contents(@"file") length], 0U);
}

TEST_F(UrlDownload, TellsASlowBodyPieceByPiece) {
    server.serve("/a", HttpReply{.body = pattern(50), .pieceDelay = std::chrono::milliseconds(40), .pieceLength = 10});
    fetch(server.url("/a"));
    EXPECT_EQ([recorder->pieces count], 5U);
    EXPECT_EQ([contents(@"file") length], 50U);
}

TEST_F(UrlDownload, GathersAFastBodyIntoFewMessages) {
    server.serve("/a", HttpReply{.patternLength = 32'000'000});
    fetch(server.url("/a"));
    EXPECT_EQ([recorder received], 32'000'000U);
    EXPECT_LT([recorder->pieces count], 200U);
}

TEST_F(UrlDownload, DecodesAGzipBodyAndTellsTheDecodedLength) {
    const auto body = pattern(500'000);
    server.serve("/a", HttpReply{.fields = {{"Content-Encoding", "gzip"}}, .body = gzip(body)});
    fetch(server.url("/a"));
    NSData *file = contents(@"file");
    EXPECT_EQ(std::string(static_cast<const char *>([file bytes]), [file length]), body);
    EXPECT_EQ([recorder received], body.size());
    EXPECT_EQ([recorder->response expectedContentLength], static_cast<long long>(gzip(body).size()));
}

TEST_F(UrlDownload, AsksOnlyWhatTheDelegateAnswers) {
    server.serve("/a", HttpReply{.body = "x"});
    server.serve("/hop", HttpReply{.status = 302, .fields = {{"Location", "/a"}}});
    TersePartner *partner = [[[TersePartner alloc] init] autorelease];
    NSURLDownload *download = startRequest(request(server.url("/hop")), partner);
    [download setDestination:path(@"file") allowOverwrite:YES];
    EXPECT_TRUE(runUntil([&] { return partner->finished; }));
}

TEST_F(UrlDownload, RunsWithoutADelegate) {
    server.serve("/a", HttpReply{.body = "x"});
    NSURLDownload *download = startRequest(request(server.url("/a")), nil);
    [download setDestination:path(@"file") allowOverwrite:YES];
    EXPECT_TRUE(runUntil([&] { return exists(@"file"); }));
}

} // namespace vant::test
