#import "DownloadFixture.h"
#include "TlsServer.hpp"

#include <cstdlib>

namespace vant::test {
namespace {

/// A real server with TLS beside the plain one.
class UrlDownloadTls : public DownloadTest {
protected:
    UrlDownloadTls()
        : tls("location /file { return 200 arrived; }\n"
              "location /again { return 302 /file; }\n"
              "location /plain { return 302 " +
              server.url("/file") + "; }\n") {
        server.serve("/file", HttpReply{.body = "plain"});
        setenv("CURL_CA_BUNDLE", tls.certificate().c_str(), 1);
    }
    ~UrlDownloadTls() override { unsetenv("CURL_CA_BUNDLE"); }

    void SetUp() override { ASSERT_TRUE(tls.isRunning()); }

    TlsServer tls;
};

} // namespace

TEST_F(UrlDownloadTls, BringsAFileOfAServerThatIsTrusted) {
    fetch(tls.url("/again"));
    EXPECT_EQ(text([recorder story]), "begin redirect response create data finish");
    EXPECT_TRUE([contents(@"file") isEqual:[@"arrived" dataUsingEncoding:NSUTF8StringEncoding]]);
}

TEST_F(UrlDownloadTls, RefusesAServerThatIsNot) {
    unsetenv("CURL_CA_BUNDLE");
    fetch(tls.url("/file"));
    EXPECT_EQ(errorCode(), -1202);
    EXPECT_FALSE(exists(@"file"));
}

TEST_F(UrlDownloadTls, NeverFollowsARedirectToPlainHttp) {
    fetch(tls.url("/plain"));
    EXPECT_EQ(errorCode(), -1002);
    EXPECT_EQ(server.requests().size(), 0U);
    EXPECT_FALSE(exists(@"file"));
}

TEST_F(UrlDownloadTls, FollowsARedirectFromPlainHttp) {
    server.serve("/up", HttpReply{.status = 302, .fields = {{"Location", tls.url("/file")}}});
    fetch(server.url("/up"));
    EXPECT_TRUE([contents(@"file") isEqual:[@"arrived" dataUsingEncoding:NSUTF8StringEncoding]]);
}

} // namespace vant::test
