#include "DownloadErrors.hpp"

#include <gtest/gtest.h>
#include <set>

using namespace vant::host;

TEST(HostDownloadErrors, EveryCodeOfADownloadHasWords) {
    for (const int code : {-1000, -1001, -1002, -1003, -1004, -1005, -1007, -1009, -1010, -1011, -1013,
                           -1015, -1100, -1101, -1102, -1200, -1202, -3000, -3001, -3002, -3003})
        EXPECT_NE(downloadErrorWords(code), downloadErrorWords(1)) << code;
    EXPECT_EQ(downloadErrorWords(1), "unknown error");
}

TEST(HostDownloadErrors, TheFaultSaysWhereToLook) {
    EXPECT_EQ(downloadFault(-1009), DownloadFault::Connection);
    EXPECT_EQ(downloadFault(-3003), DownloadFault::Disk);
    EXPECT_EQ(downloadFault(-1100), DownloadFault::Answer);
    EXPECT_EQ(downloadFault(-4711), DownloadFault::Answer);
}
