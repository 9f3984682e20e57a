#include "Notices.hpp"

#include <gtest/gtest.h>

using namespace vant::host;

TEST(HostNotices, EveryEndThatThePaneIsSilentAboutIsSaid) {
    struct Row {
        Ending end;
        const char *key;
        int code;
    };
    const Row rows[] = {
        {{EndingKind::Refused, ""}, "Refused", 0},
        {{EndingKind::RefusedLater, "", -60006}, "RefusedLater", 0},
        {{EndingKind::NotStarted, ""}, "NotStarted", 0},
        {{EndingKind::NotLaunched, "", -60031}, "NotLaunched", -60031},
        {{EndingKind::PackageFailed, ""}, "PackageFailed", 0},
        {{EndingKind::SetAside, ""}, "SetAside", 0},
        {{EndingKind::TimedOut, ""}, "TimedOut", 0},
        {{EndingKind::Stuck, "", -1001}, "StuckConnection", -1001},
        {{EndingKind::Stuck, "", -3003}, "StuckDisk", -3003},
        {{EndingKind::Stuck, "", -1100}, "StuckAnswer", -1100},
        {{EndingKind::Stuck, "", 42}, "StuckAnswer", 42},
    };
    for (const Row &row : rows)
        EXPECT_EQ(noticeOf(row.end), (Notice{row.key, row.code})) << row.key;
}

TEST(HostNotices, AGoodEndAndTheUsersOwnNeedNoWords) {
    EXPECT_FALSE(noticeOf(Ending{EndingKind::Continued, ""}));
    EXPECT_FALSE(noticeOf(Ending{EndingKind::Cancelled, ""}));
}

TEST(HostNotices, AMinuteOfStillnessIsSaid) {
    Signs signs;
    signs.secondsStill = 59.9;
    EXPECT_FALSE(noticeOf(signs));
    signs.secondsStill = 60;
    EXPECT_EQ(noticeOf(signs), (Notice{"Still"}));
}

TEST(HostNotices, ThePackageAtWorkFollowsTheOnesThatHaveEnded) {
    EXPECT_EQ(packageAtWork(false, 0, 8), 0U);
    EXPECT_EQ(packageAtWork(true, 0, 8), 1U);
    EXPECT_EQ(packageAtWork(true, 2, 8), 3U);
    EXPECT_EQ(packageAtWork(true, 7, 8), 8U);
    EXPECT_EQ(packageAtWork(true, 8, 8), 0U);
    EXPECT_EQ(packageAtWork(true, 0, 0), 0U);
}
