#include "install/package/InstallerOutput.hpp"

#include <cstdlib>
#include <gtest/gtest.h>
#include <new>
#include <string>

using vant::LineVerdict;
using vant::readInstallerLine;

namespace {

struct PercentCase {
    const char *line;
    double value;
    int whole;
};

// clang-format off
constexpr PercentCase percentCases[] = {
    {"installer:%4.533645\n",           4,     4},
    {"installer:%13.491799\n",          13,    13},
    {"installer:%97.750000\n",          97,    97},
    {"installer:%100.000000\n",         100,   100},
    {"installer:%100.0",                100,   100},
    {"installer:%0.000000\n",           0,     0},
    {"installer:%.5\n",                 0,     0},
    {"installer:%.\n",                  0,     0},
    {"installer:%9999.0\n",             9999,  9999},
    {"installer:%0099.0\n",             99,    99},
    {"installer:% 42.0\n",              42,    42},
    {"installer:%\t7.0\n",              7,     7},
    {"installer:%+100.0\n",             100,   100},
    {"installer:%-5.0\n",               -5,    -5},
    {"installer:%+-5.0\n",              0,     0},
    {"installer:%-.0\n",                0,     0},
    {"installer:%1e2.0\n",              100,   1},
    {"installer:%1E2.0\n",              100,   1},
    {"installer:%5e-1.0\n",             0.5,   5},
    {"installer:%1e99.0\n",             1e99,  1},
    {"installer:%e2.0\n",               0,     0},
    {"installer:%e999.0\n",             0,     0},
    {"installer:%5e.0\n",               5,     5},
    {"installer:%0x9.0\n",              0,     0},
    {"installer:%nan.0\n",              0,     0},
    {"installer:%inf.0\n",              0,     0},
    {"installer:%abc.0\n",              0,     0},
    {"installer:%10a.0\n",              10,    10},
    {"installer:%1,0.0\n",              1,     1},
    {"installer:%55.installer:%66.0\n", 55,    55},
    {"noise installer:%31.4\n",         31,    31},
    {"installer:installer:%8.0\n",      8,     8},
    {"iinstaller:%9.9\n",               9,     9},
    {"installer:%12.\xFF\xFE\n",        12,    12},
    {"\xE2\x80\xA6installer:%12.5\n",   12,    12},
    {"\xFFinstaller:%12.5\n",           12,    12},
    {"installer:%\xE2\x80\xA6" "99.5\n",  0,   0},
};

constexpr const char *linesWithoutPercentage[] = {
    "", "\n", "installer:%", "installer:%\n", "installer:%1", "installer:%12", "installer:%123", "installer:%1234",
    "installer:%12345.0\n", "installer:%     1.0\n", "installer:%12,500000\n", "installer: % 12.0\n",
    "INSTALLER:%12.0\n", "Installer:%12.0\n", "installer:PHASE:Writing files\xE2\x80\xA6\n", "installer:STATUS:\n",
    "installer: Package name is A.B\n", "%12.0\n", "nstaller:%12.0\n", "installer:12.0%\n", "installer:%12345installer:%6.0\n",
    "installer:%\xE2\x80\xA6\xE2\x80\xA6\xE2\x80\xA6\xE2\x80\xA6\xE2\x80\xA6.5\n", "installer:%\x97 1234.5\n",
};

constexpr const char *linesThatNeverFail[] = {
    "fail", "fail\n", "failed\n", " fail\n", "fail\n\n", "fail 1\n", "fail\n1", "1", "0 fail", "FAIL\n",
    "installer: The install failed (The Installer encountered an error.)\n",
};
// clang-format on

} // namespace

TEST(InstallerOutput, ThePercentageIsTheWholePartBehindTheMarker) {
    for (const PercentCase &row : percentCases) {
        const auto line = readInstallerLine(row.line);
        ASSERT_TRUE(line.percentage.has_value()) << row.line;
        EXPECT_DOUBLE_EQ(line.percentage->value, row.value) << row.line;
        EXPECT_EQ(line.percentage->whole, row.whole) << row.line;
        EXPECT_EQ(line.verdict, LineVerdict::ReadOn) << row.line;
    }
}

TEST(InstallerOutput, WithoutMarkerAndPointThereIsNoPercentage) {
    for (const char *row : linesWithoutPercentage) {
        EXPECT_FALSE(readInstallerLine(row).percentage.has_value()) << row;
        EXPECT_EQ(readInstallerLine(row).verdict, LineVerdict::ReadOn) << row;
    }
}

TEST(InstallerOutput, ThePointCountsAmongFiveCharactersNotBytes) {
    EXPECT_TRUE(readInstallerLine("installer:%1234.\n").percentage.has_value());
    EXPECT_FALSE(readInstallerLine("installer:%12345.\n").percentage.has_value());
    // Four characters of three bytes each stand before the point.
    EXPECT_TRUE(readInstallerLine("installer:%\xE2\x80\xA6\xE2\x80\xA6\xE2\x80\xA6\xE2\x80\xA6.\n").percentage);
}

TEST(InstallerOutput, ALineThatBeginsWithPercent100IsSuccess) {
    for (const char *row : {"%100", "%100\n", "%100.000000\n", "%1000", "%100installer:%1.0"})
        EXPECT_EQ(readInstallerLine(row).verdict, LineVerdict::Success) << row;
    for (const char *row : {" %100\n", "%10\n", "%10", "100\n", "installer:%100.000000\n", "% 100\n"})
        EXPECT_EQ(readInstallerLine(row).verdict, LineVerdict::ReadOn) << row;
}

TEST(InstallerOutput, SuccessAndPercentageCanStandInOneLine) {
    const auto line = readInstallerLine("%100 installer:%100.0\n");
    EXPECT_EQ(line.verdict, LineVerdict::Success);
    ASSERT_TRUE(line.percentage);
    EXPECT_EQ(line.percentage->whole, 100);
}

TEST(InstallerOutput, NoLineIsAFailure) {
    for (const char *row : linesThatNeverFail) {
        EXPECT_EQ(readInstallerLine(row).verdict, LineVerdict::ReadOn) << row;
        EXPECT_FALSE(readInstallerLine(row).percentage.has_value()) << row;
    }
}

TEST(InstallerOutput, TextEndsAtAZeroByte) {
    const std::string line("installer:%1\0002.0\n", 16);
    EXPECT_FALSE(readInstallerLine(line.c_str()).percentage.has_value());
    const std::string behind("x\0installer:%50.0\n", 18);
    EXPECT_FALSE(readInstallerLine(behind.c_str()).percentage.has_value());
}

TEST(InstallerOutput, ALineCutAnywhereHasItsPercentageFromThePointOn) {
    const std::string line = "installer:%42.123456\n";
    const std::size_t point = line.find('.');
    for (std::size_t cut = 0; cut <= line.size(); ++cut) {
        const auto head = readInstallerLine(line.substr(0, cut).c_str());
        EXPECT_EQ(head.percentage.has_value(), cut > point) << "cut after " << cut << " bytes";
        if (head.percentage) {
            EXPECT_EQ(head.percentage->whole, 42) << "cut after " << cut << " bytes";
        }
        const auto tail = readInstallerLine(line.substr(cut).c_str());
        EXPECT_EQ(tail.percentage.has_value(), cut == 0) << "cut after " << cut << " bytes";
        EXPECT_EQ(tail.verdict, LineVerdict::ReadOn) << "cut after " << cut << " bytes";
    }
}

TEST(InstallerOutput, EveryByteIsTakenInEveryPlace) {
    const std::string line = "installer:%42.1\n";
    for (std::size_t place = 0; place < line.size(); ++place) {
        for (int byte = 1; byte < 256; ++byte) {
            std::string changed = line;
            changed[place] = static_cast<char>(byte);
            const auto read = readInstallerLine(changed.c_str());
            const bool untouched = changed[place] == line[place];
            // Only the marker, its point and what stands between them carry meaning.
            if (place < 11 || place == 13)
                EXPECT_EQ(read.percentage.has_value(), untouched) << "byte " << byte << " at " << place;
            else
                EXPECT_TRUE(read.percentage.has_value()) << "byte " << byte << " at " << place;
            EXPECT_EQ(read.verdict, LineVerdict::ReadOn) << "byte " << byte << " at " << place;
        }
    }
}

TEST(InstallerOutput, AFullBufferWithoutALineFeedIsRead) {
    const std::string piece = "installer:%33.3" + std::string(1008, 'x');
    ASSERT_EQ(piece.size(), 1023U);
    ASSERT_TRUE(readInstallerLine(piece.c_str()).percentage);
    const std::string late = std::string(1011, 'x') + "installer:%3";
    EXPECT_FALSE(readInstallerLine(late.c_str()).percentage);
}
