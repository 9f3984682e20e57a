#include "GNUstep/download/Address.hpp"
#include "GNUstep/download/Body.hpp"
#include "GNUstep/download/ResponseHead.hpp"
#include "GNUstep/download/Transfer.hpp"

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>

namespace vant::test {
namespace {

/// A listener that follows every redirect and keeps the error.
struct FollowingListener : DownloadListener {
    void didBegin() override {}
    std::optional<DownloadRequest> willRedirect(const DownloadRequest &proposed, const DownloadResponse &) override {
        return proposed;
    }
    void didReceiveResponse(const DownloadResponse &) override {}
    void decideDestination(const std::string &) override {}
    void didCreateDestination(const std::string &) override {}
    void didReceiveData(std::size_t) override {}
    void didFinish() override {}
    void didFail(DownloadError failure, const std::string &address) override {
        error = failure;
        failingAddress = address;
    }
    DownloadError error = DownloadError::none;
    std::string failingAddress;
};

ResponseHead::State stateAfter(ResponseHead &head, std::initializer_list<const char *> lines) {
    auto state = ResponseHead::State::incomplete;
    for (const char *line : lines)
        state = head.addLine(line);
    return state;
}

} // namespace

TEST(UrlDownloadHead, ReadsStatusAndFields) {
    ResponseHead head;
    EXPECT_EQ(stateAfter(head, {"HTTP/1.1 206 Partial Content\r\n", "Content-Length:  12 \r\n", "X: a:b\r\n"}),
              ResponseHead::State::incomplete);
    EXPECT_EQ(head.addLine("\r\n"), ResponseHead::State::complete);
    EXPECT_EQ(head.response().version, "HTTP/1.1");
    EXPECT_EQ(head.response().status, 206);
    EXPECT_EQ(head.response().field("content-length"), "12");
    EXPECT_EQ(head.response().field("x"), "a:b");
    EXPECT_EQ(announcedLength(head.response()), 12);
}

TEST(UrlDownloadHead, SkipsInterimResponses) {
    ResponseHead head;
    EXPECT_EQ(stateAfter(head, {"HTTP/1.1 100 Continue\r\n", "X: interim\r\n", "\r\n"}),
              ResponseHead::State::incomplete);
    EXPECT_EQ(stateAfter(head, {"HTTP/1.1 200 OK\r\n", "\r\n"}), ResponseHead::State::complete);
    EXPECT_EQ(head.response().status, 200);
    EXPECT_EQ(head.response().field("X"), "");
}

TEST(UrlDownloadHead, IgnoresWhatIsNoHttp) {
    ResponseHead head;
    EXPECT_EQ(stateAfter(head, {"220 welcome\r\n", "230 logged in: go on\r\n", "\r\n"}),
              ResponseHead::State::incomplete);
    EXPECT_EQ(head.response().status, 0);
    EXPECT_TRUE(head.response().fields.empty());
}

TEST(UrlDownloadHead, RefusesMoreThanAnyHonestServerSends) {
    ResponseHead head;
    (void)head.addLine("HTTP/1.1 200 OK\r\n");
    const std::string filler = "X: " + std::string(1000, 'x') + "\r\n";
    int lines = 0;
    while (head.addLine(filler) == ResponseHead::State::incomplete && lines < 1000)
        ++lines;
    EXPECT_GT(lines, 200);
    EXPECT_LT(lines, 400);
}

TEST(UrlDownloadHead, LengthIsUnknownUnlessItIsOne) {
    const struct {
        const char *name;
        const char *value;
        std::int64_t length;
    } rows[] = {
        {"Content-Length", "0", 0},   {"Content-Length", "17", 17},   {"Content-Length", "", -1},
        {"Content-Length", "-5", -1}, {"Content-Length", "many", -1}, {"Other", "17", -1},
    };
    for (const auto &row : rows)
        EXPECT_EQ(announcedLength({.fields = {{row.name, row.value}}}), row.length) << row.name << " " << row.value;
    EXPECT_EQ(announcedLength({.fields = {{"Content-Length", "17"}, {"Transfer-Encoding", "chunked"}}}), -1);
}

TEST(UrlDownloadRedirects, KeepTheProtectionOfTheAddress) {
    const struct {
        const char *from;
        const char *to;
        DownloadError error;
    } rows[] = {
        {"https://h/a", "https://h/b", DownloadError::none},
        {"http://h/a", "https://h/b", DownloadError::none},
        {"http://h/a", "HTTP://h/b", DownloadError::none},
        {"ftp://h/a", "http://h/b", DownloadError::none},
        {"https://h/a", "http://h/b", DownloadError::unsupportedAddress},
        {"HTTPS://h/a", "http://h/b", DownloadError::unsupportedAddress},
        {"https://h/a", "ftp://h/b", DownloadError::unsupportedAddress},
        {"http://h/a", "ftp://h/b", DownloadError::unsupportedAddress},
        {"http://h/a", "file:///b", DownloadError::unsupportedAddress},
        {"ftp://h/a", "file:///b", DownloadError::unsupportedAddress},
        {"http://h/a", "gopher://h/b", DownloadError::unsupportedAddress},
        {"http://h/a", "", DownloadError::badAddress},
    };
    for (const auto &row : rows)
        EXPECT_EQ(errorForRedirect(row.from, row.to), row.error) << row.from << " to " << row.to;
}

TEST(UrlDownloadRedirects, ToALessProtectedAddressEndTheDownload) {
    const auto listener = std::make_shared<FollowingListener>();
    const Slice slice;
    const auto transfer = std::make_shared<Transfer>(DownloadRequest{.address = "https://h/a"}, listener, slice);
    transfer->receiveResponse({.address = "https://h/a", .status = 302, .fields = {{"Location", "http://h/b"}}});
    const auto now = Clock::now();
    while (transfer->hasMessage(now))
        transfer->deliverNextMessage(now);
    EXPECT_EQ(listener->error, DownloadError::unsupportedAddress);
    EXPECT_EQ(listener->failingAddress, "http://h/b");
    EXPECT_TRUE(transfer->isFinished());
}

TEST(UrlDownloadBody, ReservesATenthOfTheFreeSpaceUpToABound) {
    constexpr std::uint64_t mebibyte = 1024ULL * 1024;
    EXPECT_EQ(reservedSpace(0), 0U);
    EXPECT_EQ(reservedSpace(10 * mebibyte), mebibyte);
    EXPECT_EQ(reservedSpace(1'000'000 * mebibyte), 256 * mebibyte);
}

} // namespace vant::test
