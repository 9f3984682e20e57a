#include "Ending.hpp"

#include <gtest/gtest.h>

using vant::host::ending;
using vant::host::EndingKind;
using vant::host::Signs;

static Signs running() {
    Signs signs;
    signs.seconds = 5;
    signs.timeOut = 600;
    return signs;
}

TEST(HostEnding, ARunWithoutASignGoesOn) {
    EXPECT_FALSE(ending(running()).has_value());
}

TEST(HostEnding, OnlyAPaneThatAsksToGoOnContinues) {
    Signs signs = running();
    signs.continued = true;
    ASSERT_TRUE(ending(signs).has_value());
    EXPECT_TRUE(ending(signs)->continued());
}

TEST(HostEnding, EveryOtherEndIsNoContinuationAndSaysWhy) {
    struct Row {
        const char *what;
        void (*show)(Signs &);
        const char *words;
    };
    const Row rows[] = {
        {"refused", [](Signs &signs) { signs.refused = true; }, "refused"},
        {"failed", [](Signs &signs) { signs.packageFailed = true; }, "failed"},
        {"cancelled", [](Signs &signs) { signs.cancelled = true; }, "user"},
        {"set aside", [](Signs &signs) { signs.secondsSinceButton2 = 1.0; }, "set aside"},
        {"not launched", [](Signs &signs) { signs.launchError = -60031; }, "-60031"},
        {"refused again", [](Signs &signs) { signs.launchError = -60006; }, "refused for a further package (-60006)"},
        {"denied again", [](Signs &signs) { signs.launchError = -60005; }, "refused for a further package (-60005)"},
        {"stuck",
         [](Signs &signs) {
             signs.downloadError = -3003;
             signs.secondsStill = 10;
         },
         "the file cannot be written (-3003)"},
        {"time-out", [](Signs &signs) { signs.seconds = 600; }, "no end after 600 s"},
    };
    for (const Row &row : rows) {
        Signs signs = running();
        row.show(signs);
        const auto end = ending(signs);
        ASSERT_TRUE(end.has_value()) << row.what;
        EXPECT_FALSE(end->continued()) << row.what;
        EXPECT_NE(end->reason.find(row.words), std::string::npos) << row.what << ": " << end->reason;
    }
}

TEST(HostEnding, AButtonJustEnabledMayStillBeFollowedByTheWishToGoOn) {
    Signs signs = running();
    signs.secondsSinceButton2 = 0.9;
    EXPECT_FALSE(ending(signs).has_value());
    signs.secondsSinceButton2 = 5;
    signs.continued = true;
    EXPECT_TRUE(ending(signs)->continued());
}

TEST(HostEnding, ARefusalIsToldAsSuchWhateverErrorItLeaves) {
    Signs signs = running();
    signs.refused = true;
    signs.launchError = -60006;
    EXPECT_EQ(ending(signs)->kind, EndingKind::Refused);
}

TEST(HostEnding, AFailedDownloadEndsNoRunThatStillMoves) {
    Signs signs = running();
    signs.downloadError = -1003;
    signs.secondsStill = 9.9;
    EXPECT_FALSE(ending(signs)) << "other downloads may be under way";
    signs.secondsStill = 500;
    signs.installing = true;
    EXPECT_FALSE(ending(signs)) << "the media's packages are being installed, and some take long";
    signs.installing = false;
    EXPECT_EQ(ending(signs)->kind, EndingKind::Stuck);
    EXPECT_EQ(ending(signs)->code, -1003);
}

TEST(HostEnding, AQuietRunWithoutAnErrorGoesOn) {
    Signs signs = running();
    signs.secondsStill = 500;
    EXPECT_FALSE(ending(signs));
}
