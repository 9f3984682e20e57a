#import "DownloadFixture.h"

namespace vant::test {

using UrlDownloadRequest = DownloadTest;

namespace {

HttpReply redirect(const std::string &location, int status = 302) {
    return HttpReply{.status = status, .fields = {{"Location", location}}, .body = "see elsewhere"};
}

} // namespace

TEST_F(UrlDownloadRequest, SendsItsFieldsExactlyAsGiven) {
    server.serve("/a?b=c&d", HttpReply{.body = "x"});
    NSMutableURLRequest *request = DownloadTest::request(server.url("/a?b=c&d"));
    NSString *agent = @"Mozilla/5.0 (Macintosh; Intel) Like/5.1.7 (of; sorts)";
    [request addValue:agent forHTTPHeaderField:@"User-Agent"];
    [request addValue:@"text/html,*/*;q=0.8" forHTTPHeaderField:@"Accept"];
    [request addValue:@"" forHTTPHeaderField:@"X-Empty"];
    [startRequest(request, recorder) setDestination:path(@"file") allowOverwrite:YES];
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    ASSERT_EQ(server.requests().size(), 1U);
    const auto seen = server.requests().front();
    EXPECT_EQ(seen.method, "GET");
    EXPECT_EQ(seen.target, "/a?b=c&d");
    EXPECT_EQ(seen.field("User-Agent"), text(agent));
    EXPECT_EQ(seen.field("Accept"), "text/html,*/*;q=0.8");
    EXPECT_EQ(seen.field("Accept-Encoding"), "gzip, deflate");
}

TEST_F(UrlDownloadRequest, IsACopyTakenAtTheStart) {
    server.serve("/a", HttpReply{.body = "x"});
    NSMutableURLRequest *request = DownloadTest::request(server.url("/a"));
    NSURLDownload *download = startRequest(request, recorder);
    [request setURL:[NSURL URLWithString:@"http://127.0.0.1/other"]];
    EXPECT_EQ(text([[[download request] URL] absoluteString]), server.url("/a"));
    [download cancel];
}

TEST_F(UrlDownloadRequest, PostsItsBody) {
    server.serve("/form", HttpReply{.body = "x"});
    NSMutableURLRequest *request = DownloadTest::request(server.url("/form"));
    [request setHTTPMethod:@"POST"];
    [request setHTTPBody:[@"a=1&b=2" dataUsingEncoding:NSUTF8StringEncoding]];
    [startRequest(request, recorder) setDestination:path(@"file") allowOverwrite:YES];
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    EXPECT_EQ(server.requests().front().method, "POST");
    EXPECT_EQ(server.requests().front().body, "a=1&b=2");
}

TEST_F(UrlDownloadRequest, CannotSmuggleAFieldInAnother) {
    server.serve("/a", HttpReply{.body = "x"});
    NSMutableURLRequest *request = DownloadTest::request(server.url("/a"));
    [request addValue:@"one\r\nX-Smuggled: two" forHTTPHeaderField:@"X-Plain"];
    [startRequest(request, recorder) setDestination:path(@"file") allowOverwrite:YES];
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    EXPECT_EQ(server.requests().front().field("X-Smuggled"), "");
}

TEST_F(UrlDownloadRequest, FollowsAChainOfRedirects) {
    server.serve("/1", redirect("/2", 301));
    server.serve("/2", redirect("3", 307));
    server.serve("/3", redirect(server.url("/end"), 308));
    server.serve("/end", HttpReply{.body = "arrived"});
    fetch(server.url("/1"));
    EXPECT_EQ(text([recorder story]), "begin redirect redirect redirect response create data finish");
    EXPECT_EQ(text([recorder->redirects componentsJoinedByString:@" "]),
              server.url("/2") + " " + server.url("/3") + " " + server.url("/end"));
    EXPECT_TRUE([contents(@"file") isEqual:[@"arrived" dataUsingEncoding:NSUTF8StringEncoding]]);
    EXPECT_EQ(text([[recorder->response URL] absoluteString]), server.url("/end"));
    EXPECT_EQ(server.connections(), 1U);
}

TEST_F(UrlDownloadRequest, SendsItsFieldsAgainAfterARedirect) {
    server.serve("/1", redirect("/2"));
    server.serve("/2", HttpReply{.body = "x"});
    NSMutableURLRequest *request = DownloadTest::request(server.url("/1"));
    [request addValue:@"Browser/1" forHTTPHeaderField:@"User-Agent"];
    [startRequest(request, recorder) setDestination:path(@"file") allowOverwrite:YES];
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    ASSERT_EQ(server.requests().size(), 2U);
    EXPECT_EQ(server.requests().back().field("User-Agent"), "Browser/1");
}

TEST_F(UrlDownloadRequest, FollowsARedirectWithoutABody) {
    server.serve("/1", HttpReply{.status = 302, .fields = {{"Location", "/2"}}});
    server.serve("/2", HttpReply{.body = "x"});
    fetch(server.url("/1"));
    EXPECT_EQ(text([recorder story]), "begin redirect response create data finish");
}

TEST_F(UrlDownloadRequest, GivesUpARedirectsLongBody) {
    auto reply = redirect("/2");
    reply.patternLength = 50'000'000;
    server.serve("/1", reply);
    server.serve("/2", HttpReply{.body = "x"});
    fetch(server.url("/1"));
    EXPECT_EQ(text([recorder story]), "begin redirect response create data finish");
    EXPECT_EQ([contents(@"file") length], 1U);
}

TEST_F(UrlDownloadRequest, EndsARedirectLoop) {
    server.serve("/1", redirect("/2"));
    server.serve("/2", redirect("/1"));
    fetch(server.url("/1"));
    EXPECT_EQ(errorCode(), -1007);
    EXPECT_EQ([recorder->redirects count], 20U);
    EXPECT_FALSE(exists(@"file"));
}

TEST_F(UrlDownloadRequest, DoesNotFollowARedirectOutOfTheWeb) {
    server.serve("/1", redirect("file:///etc/passwd"));
    fetch(server.url("/1"));
    EXPECT_EQ(errorCode(), -1002);
    EXPECT_FALSE(exists(@"file"));
}

TEST_F(UrlDownloadRequest, DoesNotFollowARedirectToAnUnprotectedProtocol) {
    server.serve("/1", redirect("ftp://127.0.0.1:" + std::to_string(closedPort()) + "/2"));
    fetch(server.url("/1"));
    EXPECT_EQ(text([recorder story]), "begin redirect fail");
    EXPECT_EQ(errorCode(), -1002);
}

TEST_F(UrlDownloadRequest, KeepsCredentialsFromAnotherHost) {
    server.serve("/1", redirect("http://localhost:" + std::to_string(server.port()) + "/2"));
    server.serve("/2", HttpReply{.body = "x"});
    NSMutableURLRequest *request = DownloadTest::request(server.url("/1"));
    [request addValue:@"Basic c2VjcmV0" forHTTPHeaderField:@"Authorization"];
    [startRequest(request, recorder) setDestination:path(@"file") allowOverwrite:YES];
    ASSERT_TRUE(runUntil([&] { return [recorder done]; }));
    ASSERT_EQ(server.requests().size(), 2U);
    EXPECT_EQ(server.requests().front().field("Authorization"), "Basic c2VjcmV0");
    EXPECT_EQ(server.requests().back().field("Authorization"), "");
}

TEST_F(UrlDownloadRequest, GoesWhereTheDelegateSendsIt) {
    server.serve("/1", redirect("/2"));
    server.serve("/own", HttpReply{.body = "own"});
    recorder->redirectAnswer = [request(server.url("/own")) retain];
    fetch(server.url("/1"));
    EXPECT_TRUE([contents(@"file") isEqual:[@"own" dataUsingEncoding:NSUTF8StringEncoding]]);
}

TEST_F(UrlDownloadRequest, TakesTheRedirectForTheAnswerWhenTheDelegateRefusesIt) {
    server.serve("/1", redirect("/2"));
    recorder->refusesRedirects = YES;
    fetch(server.url("/1"));
    EXPECT_EQ(text([recorder story]), "begin redirect response create data finish");
    EXPECT_EQ([(NSHTTPURLResponse *)recorder->response statusCode], 302);
    EXPECT_TRUE([contents(@"file") isEqual:[@"see elsewhere" dataUsingEncoding:NSUTF8StringEncoding]]);
}

TEST_F(UrlDownloadRequest, TakesAnEmptyRedirectForTheAnswerWhenTheDelegateRefusesIt) {
    server.serve("/1", HttpReply{.status = 302, .fields = {{"Location", "/2"}}});
    recorder->refusesRedirects = YES;
    fetch(server.url("/1"));
    EXPECT_EQ(text([recorder story]), "begin redirect response create finish");
}

TEST_F(UrlDownloadRequest, CannotBeResumed) {
    EXPECT_FALSE([NSURLDownload canResumeDownloadDecodedWithEncodingMIMEType:@"application/gzip"]);
    EXPECT_EQ([[NSURLDownload alloc] initWithResumeData:[NSData data] delegate:nil path:@"/tmp/x"], nil);
    NSURLDownload *download = startRequest(request(server.url("/a")), recorder);
    EXPECT_EQ([download resumeData], nil);
    [download cancel];
}

} // namespace vant::test
