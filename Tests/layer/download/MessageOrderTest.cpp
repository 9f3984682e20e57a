#include "GNUstep/download/Messages.hpp"

#include <gtest/gtest.h>
#include <ostream>

namespace vant::test {
namespace {

constexpr unsigned fields = 11;

/// One of all stages there can be, for the tests that try every one.
DownloadStage stageNumbered(unsigned number) {
    const auto bit = [&](unsigned place) { return (number >> place & 1U) != 0; };
    return {.begun = bit(0),
            .redirectPending = bit(1),
            .responsePending = bit(2),
            .responseDelivered = bit(3),
            .decisionAsked = bit(4),
            .destinationKnown = bit(5),
            .fileMade = bit(6),
            .dataPending = bit(7),
            .dataDue = bit(8),
            .ended = bit(9),
            .failed = bit(10)};
}

/// Checks a claim for every stage.
template<class Claim>
void everyStage(Claim claim) {
    for (unsigned number = 0; number < 1U << fields; ++number) {
        const auto stage = stageNumbered(number);
        EXPECT_TRUE(claim(stage, nextMessage(stage))) << "stage " << number;
    }
}

} // namespace

TEST(UrlDownloadOrder, BeginComesFirstAndOnce) {
    everyStage([](const auto &stage, auto next) { return (next == DownloadMessage::begin) == !stage.begun; });
}

TEST(UrlDownloadOrder, RedirectsAndResponsesComeBeforeAnythingOfTheBody) {
    everyStage([](const auto &stage, auto next) {
        if (!stage.begun)
            return true;
        if (stage.redirectPending)
            return next == DownloadMessage::redirect;
        return !stage.responsePending || next == DownloadMessage::response;
    });
}

TEST(UrlDownloadOrder, EndIsToldOnceAndLast) {
    everyStage([](const auto &stage, auto next) {
        if (next != DownloadMessage::finish && next != DownloadMessage::fail)
            return true;
        return stage.ended && !stage.dataPending && !stage.responsePending && !stage.redirectPending &&
               stage.failed == (next == DownloadMessage::fail);
    });
}

TEST(UrlDownloadOrder, FinishNeedsAFile) {
    everyStage([](const auto &stage, auto next) { return next != DownloadMessage::finish || stage.fileMade; });
}

TEST(UrlDownloadOrder, FileIsMadeOnceAfterTheResponseAtAKnownPlace) {
    everyStage([](const auto &stage, auto next) {
        return next != DownloadMessage::create ||
               (stage.responseDelivered && stage.destinationKnown && !stage.fileMade && !(stage.ended && stage.failed));
    });
}

TEST(UrlDownloadOrder, DestinationIsAskedForOnceAndOnlyWhenThereIsNone) {
    everyStage([](const auto &stage, auto next) {
        return next != DownloadMessage::decide || (!stage.destinationKnown && !stage.decisionAsked);
    });
}

TEST(UrlDownloadOrder, DataWaitsForItsTimeUntilTheEnd) {
    everyStage([](const auto &stage, auto next) {
        return next != DownloadMessage::data || (stage.dataPending && (stage.dataDue || stage.ended));
    });
}

TEST(UrlDownloadOrder, EveryFailureIsTold) {
    everyStage([](auto stage, auto next) {
        for (int steps = 0; stage.ended && stage.failed && steps < 10; ++steps) {
            if (next == DownloadMessage::fail)
                return true;
            stage.begun = true;
            stage.redirectPending = next == DownloadMessage::redirect ? false : stage.redirectPending;
            stage.responsePending = next == DownloadMessage::response ? false : stage.responsePending;
            stage.dataPending = next == DownloadMessage::data ? false : stage.dataPending;
            next = nextMessage(stage);
        }
        return !(stage.ended && stage.failed);
    });
}

TEST(UrlDownloadOrder, FieldsAreFoundWhateverTheirCase) {
    const DownloadResponse response{.fields = {{"Content-TYPE", "a/b"}, {"content-type", "second"}}};
    EXPECT_EQ(response.field("content-type"), "a/b");
    EXPECT_EQ(response.field("Content"), "");
}

TEST(UrlDownloadOrder, MediaTypeIsTheFieldWithoutItsParameters) {
    const struct {
        const char *field;
        const char *type;
    } rows[] = {
        {"text/html; charset=utf-8", "text/html"},   {"text/html ;x", "text/html"},
        {"application/zip", "application/zip"},      {"", "application/octet-stream"},
        {"; charset=x", "application/octet-stream"}, {" ", "application/octet-stream"},
    };
    for (const auto &row : rows)
        EXPECT_EQ((DownloadResponse{.fields = {{"Content-Type", row.field}}}.mediaType()), row.type) << row.field;
}

TEST(UrlDownloadOrder, OnlyRedirectsWithATargetAreRedirects) {
    const struct {
        int status;
        const char *location;
        const char *target;
    } rows[] = {
        {301, "/b", "http://host/b"},
        {302, "b?c", "http://host/a/b?c"},
        {303, "http://other/", "http://other/"},
        {307, "//other/x", "http://other/x"},
        {308, "/with blank", "http://host/with%20blank"},
        {300, "/b", ""},
        {304, "/b", ""},
        {200, "/b", ""},
        {404, "/b", ""},
        {302, "", ""},
    };
    for (const auto &row : rows) {
        const DownloadResponse response{
            .address = "http://host/a/", .status = row.status, .fields = {{"Location", row.location}}};
        EXPECT_EQ(response.redirect().value_or(""), row.target) << row.status << " " << row.location;
    }
}

TEST(UrlDownloadOrder, PostedFormBecomesAFetchWhereBrowsersMakeItOne) {
    const struct {
        int status;
        const char *method;
        const char *next;
    } rows[] = {
        {301, "POST", "GET"}, {302, "POST", "GET"}, {303, "POST", "GET"},  {307, "POST", "POST"},
        {301, "PUT", "PUT"},  {303, "PUT", "GET"},  {303, "HEAD", "HEAD"}, {302, "GET", "GET"},
    };
    for (const auto &row : rows) {
        const DownloadRequest request{.address = "http://host/a", .method = row.method, .body = "form"};
        const auto next = redirected(request, row.status, "http://host/b");
        EXPECT_EQ(next.method, row.next) << row.status << " " << row.method;
        EXPECT_EQ(next.body.empty(), std::string(row.method) != row.next) << row.status << " " << row.method;
        EXPECT_EQ(next.address, "http://host/b");
    }
}

TEST(UrlDownloadOrder, CredentialsStayWithTheirHost) {
    const DownloadRequest request{.address = "http://host/a",
                                  .fields = {{"authorization", "secret"}, {"Cookie", "c"}, {"Accept", "x"}}};
    EXPECT_EQ(redirected(request, 302, "http://host/b").fields.size(), 3U);
    ASSERT_EQ(redirected(request, 302, "http://other/b").fields.size(), 1U);
    EXPECT_EQ(redirected(request, 302, "http://other/b").fields.front().name, "Accept");
}

} // namespace vant::test
