#include "download/DownloadProgress.hpp"

#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

namespace vant {
namespace {

TEST(DownloadProgress, IsThePercentageOfTheExpectedLength) {
    const auto progress = downloadProgress(25, 100);
    ASSERT_TRUE(progress);
    EXPECT_EQ(progress->fraction, 0.25F);
    EXPECT_EQ(progress->percent, 25.0);
}

TEST(DownloadProgress, ComesBeforeTheFirstByteToo) {
    ASSERT_TRUE(downloadProgress(0, 10));
    EXPECT_EQ(downloadProgress(0, 10)->percent, 0.0);
}

TEST(DownloadProgress, IsMissingOnceTheExpectedLengthIsReached) {
    EXPECT_TRUE(downloadProgress(99, 100));
    EXPECT_FALSE(downloadProgress(100, 100));
    EXPECT_FALSE(downloadProgress(101, 100));
}

TEST(DownloadProgress, IsMissingForEveryPieceOfAnUnknownLength) {
    for (const std::int64_t soFar : {0LL, 1LL, 1LL << 40})
        EXPECT_FALSE(downloadProgress(soFar, -1)) << soFar;
    EXPECT_FALSE(downloadProgress(0, 0));
}

TEST(DownloadProgress, KeepsThePrecisionOf32Bits) {
    struct Row {
        std::int64_t soFar;
        std::int64_t expected;
        std::uint32_t bits; ///< of the percentage as a 32-bit value
    };
    // The bits were worked out apart, by rounding each exact intermediate value to 24 binary digits.
    const Row rows[] = {
        {1, 3, 0x42055556},
        {2, 3, 0x42855556},
        {1, 7, 0x4164924A},
        {1, 1000003, 0x38D1B6EF},
        {16777217, 33554434, 0x42480000},
        {123456789, 987654321, 0x41480000},
    };
    for (const Row &row : rows) {
        const auto progress = downloadProgress(row.soFar, row.expected);
        ASSERT_TRUE(progress) << row.soFar;
        EXPECT_EQ(std::bit_cast<std::uint32_t>(static_cast<float>(progress->percent)), row.bits)
            << row.soFar << " of " << row.expected << " gave " << progress->percent;
        EXPECT_EQ(progress->percent, static_cast<double>(static_cast<float>(progress->percent))) << row.soFar;
    }
}

TEST(DownloadProgress, MultipliesTwiceAndDividesOnce) {
    // A fraction for which the three roundings give another value than one multiplication.
    int differing = 0;
    for (std::int64_t soFar = 0; soFar < 1000; ++soFar) {
        const float fraction = static_cast<float>(soFar) / 1000.0F;
        volatile float percent = fraction * 100.0F;
        const float once = percent;
        percent = percent * 100.0F;
        percent = percent / 100.0F;
        EXPECT_EQ(downloadProgress(soFar, 1000)->percent, static_cast<double>(percent)) << soFar;
        differing += once == percent ? 0 : 1;
    }
    EXPECT_GT(differing, 0) << "no case tells the two computations apart";
}

TEST(DownloadProgress, StaysBelowAHundredAndNeverFalls) {
    constexpr std::int64_t expected = 3'000'000'000;
    double last = 0;
    for (std::int64_t soFar = 0; soFar < expected; soFar += 997'331) {
        const auto progress = downloadProgress(soFar, expected);
        ASSERT_TRUE(progress);
        EXPECT_GE(progress->percent, last) << soFar;
        EXPECT_LE(progress->percent, 100.0) << soFar;
        last = progress->percent;
    }
}

TEST(OverallShare, SpreadsThePercentageOverTheComponentsNotYetExpanded) {
    EXPECT_EQ(overallShare(50.0, 4, 0), 12.5);
    EXPECT_EQ(overallShare(50.0, 4, 2), 25.0);
    EXPECT_EQ(overallShare(50.0, 4, 3), 50.0);
    EXPECT_EQ(overallShare(0.0, 4, 1), 0.0);
}

TEST(OverallShare, IsNotFiniteWhenNothingRemains) {
    EXPECT_EQ(overallShare(50.0, 4, 4), std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(overallShare(0.0, 4, 4)));
}

TEST(OverallShare, CountsTheRemainderWithoutASign) {
    EXPECT_EQ(overallShare(50.0, 2, 3), 50.0 / 18446744073709551615.0);
    EXPECT_EQ(overallShare(50.0, 0, 1), 50.0 / 18446744073709551615.0);
}

} // namespace
} // namespace vant
