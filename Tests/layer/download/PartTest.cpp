#include "GNUstep/download/Decoder.hpp"
#include "GNUstep/download/Errors.hpp"
#include "GNUstep/download/File.hpp"
#include "Gzip.hpp"
#include "Jail.hpp"

#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace vant::test {
namespace {

using namespace std::chrono_literals;

const std::string sample = [] {
    std::string text;
    for (int i = 0; i < 40'000; ++i)
        text += std::to_string(i * 7919 % 1000);
    return text;
}();

/// What comes out when the bytes go in in pieces of a size.
std::string decoded(std::string_view bytes, std::size_t piece, ContentDecoder &decoder) {
    std::string out;
    for (std::size_t at = 0; at < bytes.size(); at += piece) {
        decoder.offer(bytes.substr(at, piece));
        while (!decoder.isDrained()) {
            const auto text = decoder.next();
            if (!text)
                return "damaged";
            out += *text;
        }
    }
    return out;
}

} // namespace

TEST(UrlDownloadDecoder, ReadsEveryWrappingInPiecesOfAnySize) {
    for (const auto wrapping : {Wrapping::gzip, Wrapping::zlib, Wrapping::none})
        for (const std::size_t piece : {1UL, 2UL, 3UL, 10UL, 1000UL, 1'000'000UL}) {
            ContentDecoder decoder;
            EXPECT_EQ(decoded(packed(sample, wrapping), piece, decoder), sample)
                << static_cast<int>(wrapping) << " " << piece;
            EXPECT_TRUE(decoder.isComplete());
        }
}

TEST(UrlDownloadDecoder, ReadsStreamsThatFollowOneAnotherAndSkipsPadding) {
    ContentDecoder decoder;
    EXPECT_EQ(decoded(gzip("one ") + gzip("two") + std::string(10, '\0'), 1000, decoder), "one two");
    EXPECT_TRUE(decoder.isComplete());
}

// Where a server's bytes are cut must not decide whether what follows a stream begins another.
TEST(UrlDownloadDecoder, PaddingLastsToTheEndHoweverItIsCut) {
    for (const auto &padding : {std::string("\0\x1f\x8b\x08", 4), std::string("behind\x1f"), gzip("two").substr(1)})
        for (const std::size_t piece : {1UL, 2UL, 3UL, 1000UL}) {
            ContentDecoder decoder;
            EXPECT_EQ(decoded(gzip("one") + padding, piece, decoder), "one") << piece;
            EXPECT_TRUE(decoder.isComplete());
        }
}

TEST(UrlDownloadDecoder, OnlyGzipIsFollowedByAnotherStream) {
    for (const auto wrapping : {Wrapping::zlib, Wrapping::none})
        for (const std::size_t piece : {1UL, 1000UL}) {
            ContentDecoder decoder;
            EXPECT_EQ(decoded(packed("one", wrapping) + gzip("two"), piece, decoder), "one") << piece;
            EXPECT_TRUE(decoder.isComplete());
        }
}

TEST(UrlDownloadDecoder, KnowsThatAStreamWasCut) {
    const auto whole = gzip(sample);
    for (const std::size_t length : {1UL, 5UL, 100UL, whole.size() - 9, whole.size() - 1}) {
        ContentDecoder decoder;
        (void)decoded(whole.substr(0, length), 1000, decoder);
        EXPECT_FALSE(decoder.isComplete()) << length;
    }
    EXPECT_TRUE(ContentDecoder().isComplete());
}

TEST(UrlDownloadDecoder, RefusesDamage) {
    auto damaged = gzip(sample);
    damaged[damaged.size() / 2] = static_cast<char>(damaged[damaged.size() / 2] ^ 0x55);
    ContentDecoder decoder;
    const bool refused = decoded(damaged, 1000, decoder) == "damaged";
    EXPECT_TRUE(refused || !decoder.isComplete());
}

TEST(UrlDownloadDecoder, GivesLargeContentInPiecesOfBoundedSize) {
    ContentDecoder decoder;
    decoder.offer(gzip(std::string(10'000'000, 'x')));
    std::size_t sum = 0;
    while (!decoder.isDrained()) {
        const auto piece = decoder.next();
        ASSERT_TRUE(piece);
        ASSERT_LE(piece->size(), 128UL * 1024);
        sum += piece->size();
    }
    EXPECT_EQ(sum, 10'000'000U);
    EXPECT_EQ(decoder.next()->size(), 0U) << "a drained decoder has nothing to give";
}

TEST(UrlDownloadDecoder, KnowsItsEncodings) {
    for (const char *name : {"gzip", "x-gzip", "GZip", "deflate"})
        EXPECT_TRUE(ContentDecoder::isSupported(name)) << name;
    for (const char *name : {"", "br", "identity", "gzip2"})
        EXPECT_FALSE(ContentDecoder::isSupported(name)) << name;
}

TEST(UrlDownloadErrors, TransfersEndsHaveThePlatformsNumbers) {
    const struct {
        CURLcode result;
        long systemError;
        int code;
    } rows[] = {
        {CURLE_OK, 0, 0},
        {CURLE_URL_MALFORMAT, 0, -1000},
        {CURLE_OPERATION_TIMEDOUT, 0, -1001},
        {CURLE_COULDNT_RESOLVE_HOST, 0, -1003},
        {CURLE_COULDNT_RESOLVE_PROXY, 0, -1003},
        {CURLE_COULDNT_CONNECT, ECONNREFUSED, -1004},
        {CURLE_COULDNT_CONNECT, EHOSTUNREACH, -1004},
        {CURLE_COULDNT_CONNECT, ENETUNREACH, -1009},
        {CURLE_COULDNT_CONNECT, ENETDOWN, -1009},
        {CURLE_COULDNT_CONNECT, ETIMEDOUT, -1001},
        {CURLE_RECV_ERROR, 0, -1005},
        {CURLE_SEND_ERROR, 0, -1005},
        {CURLE_GOT_NOTHING, 0, -1005},
        {CURLE_PARTIAL_FILE, 0, -1005},
        {CURLE_UNSUPPORTED_PROTOCOL, 0, -1011},
        {CURLE_WEIRD_SERVER_REPLY, 0, -1011},
        {CURLE_LOGIN_DENIED, 0, -1013},
        {CURLE_REMOTE_FILE_NOT_FOUND, 0, -1100},
        {CURLE_REMOTE_ACCESS_DENIED, 0, -1102},
        {CURLE_SSL_CONNECT_ERROR, 0, -1200},
        {CURLE_PEER_FAILED_VERIFICATION, 0, -1202},
        {CURLE_OUT_OF_MEMORY, 0, -1},
    };
    for (const auto &row : rows)
        EXPECT_EQ(static_cast<int>(errorForTransfer(row.result, row.systemError)), row.code)
            << curl_easy_strerror(row.result) << " " << row.systemError;
}

TEST(UrlDownloadErrors, FilesEndsHaveThePlatformsNumbers) {
    EXPECT_EQ(errorForOpening(ENOENT, false), DownloadError::cannotCreateFile);
    EXPECT_EQ(errorForOpening(EACCES, true), DownloadError::cannotOpenFile);
    EXPECT_EQ(errorForOpening(ENOSPC, false), DownloadError::cannotWriteFile);
    EXPECT_EQ(errorForReading(ENOENT), DownloadError::fileDoesNotExist);
    EXPECT_EQ(errorForReading(EACCES), DownloadError::noPermissionToRead);
    EXPECT_EQ(errorForReading(EISDIR), DownloadError::fileIsFolder);
}

TEST(UrlDownloadFile, HoldsWhatWasWrittenAndIsClosedInChildren) {
    const Jail jail;
    DownloadFile file;
    EXPECT_FALSE(file.created());
    ASSERT_EQ(file.create(jail.path("a"), Existing::replace), DownloadError::none);
    EXPECT_EQ(file.write("one "), DownloadError::none);
    EXPECT_EQ(file.write("two"), DownloadError::none);
    EXPECT_EQ(file.close(), DownloadError::none);
    EXPECT_TRUE(file.created());
    EXPECT_EQ(contentsOf(jail.path("a")), "one two");
}

TEST(UrlDownloadFile, WriteAfterTheCloseFails) {
    const Jail jail;
    DownloadFile file;
    ASSERT_EQ(file.create(jail.path("a"), Existing::replace), DownloadError::none);
    ASSERT_EQ(file.close(), DownloadError::none);
    EXPECT_EQ(file.write("late"), DownloadError::cannotWriteFile);
}

TEST(UrlDownloadFile, FolderIsKeptWhenANewNameIsToBeFound) {
    const Jail jail;
    std::filesystem::create_directory(jail.path("a"));
    DownloadFile file;
    ASSERT_EQ(file.create(jail.path("a"), Existing::keep), DownloadError::none);
    EXPECT_EQ(file.path(), jail.path("a-1"));
}

TEST(UrlDownloadFile, RemovalTakesOnlyItsOwnFile) {
    const Jail jail;
    DownloadFile first;
    ASSERT_EQ(first.create(jail.path("a"), Existing::replace), DownloadError::none);
    DownloadFile second;
    ASSERT_EQ(second.create(jail.path("a"), Existing::replace), DownloadError::none);
    first.remove();
    EXPECT_TRUE(std::filesystem::exists(jail.path("a")));
    second.remove();
    EXPECT_FALSE(std::filesystem::exists(jail.path("a")));
}

} // namespace vant::test
