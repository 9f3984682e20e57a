#include "download/DownloadFailure.hpp"

#include <gtest/gtest.h>
#include <set>
#include <string>

namespace vant {
namespace {

const std::set<int> networkCodes = {-1009, -1005, -1003, -1001};

TEST(DownloadFailure, IsRetriedTwiceWhenTheNetworkFails) {
    for (const int code : networkCodes) {
        EXPECT_EQ(failureOutcome(code, 0), FailureOutcome::Retry) << code;
        EXPECT_EQ(failureOutcome(code, 1), FailureOutcome::Retry) << code;
        EXPECT_EQ(failureOutcome(code, 2), FailureOutcome::NetworkLost) << code;
        EXPECT_EQ(failureOutcome(code, 3), FailureOutcome::NetworkLost) << code;
    }
}

TEST(DownloadFailure, IsNeverRetriedWhenTheFileCannotBeWritten) {
    for (const int used : {0, 1, 2})
        EXPECT_EQ(failureOutcome(-3003, used), FailureOutcome::CannotWrite) << used;
}

TEST(DownloadFailure, OfAnyOtherCodeIsFinal) {
    for (int code = -4000; code <= 4000; ++code) {
        if (networkCodes.contains(code) || code == -3003)
            continue;
        EXPECT_EQ(failureOutcome(code, 0), FailureOutcome::Final) << code;
        EXPECT_EQ(failureOutcome(code, 2), FailureOutcome::Final) << code;
    }
}

TEST(DownloadFailure, IsTracedByItsClass) {
    const std::string start = "***ERROR*** Download did fail with error: ";
    for (int code = -4000; code <= 4000; ++code) {
        const std::string expected = networkCodes.contains(code) ? "1009,1001,1005,1003"
                                     : code == -3003             ? "3003"
                                                                 : "Unknown error";
        EXPECT_EQ(failureTrace(code), start + expected) << code;
    }
}

TEST(DownloadFailure, FallsBackOnceAndOnlyWhenTheRetriesAreUsedUp) {
    for (const auto outcome : {FailureOutcome::Retry, FailureOutcome::CannotWrite, FailureOutcome::Final})
        EXPECT_FALSE(fallsBack(outcome, false)) << static_cast<int>(outcome);
    EXPECT_TRUE(fallsBack(FailureOutcome::NetworkLost, false));
    EXPECT_FALSE(fallsBack(FailureOutcome::NetworkLost, true));
}

} // namespace
} // namespace vant
