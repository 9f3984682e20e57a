#include "check/Names.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace vant::media {
namespace {

const std::vector<std::string> known{"Smart Update", "WebError", "Debug", "MODELS"};

TEST(Names, AKeyWithoutItsBlankIsMeantForTheKnownOne) {
    EXPECT_EQ(probablyMeant("SmartUpdate", known), "Smart Update");
    EXPECT_EQ(probablyMeant("smart_update", known), "Smart Update");
    EXPECT_EQ(probablyMeant("Models", known), "MODELS");
}

TEST(Names, TwoLettersMayBeOff) {
    EXPECT_EQ(probablyMeant("WebErorr", known), "WebError");
    EXPECT_EQ(probablyMeant("Debgu", known), std::nullopt) << "two letters of five are too many";
    EXPECT_EQ(probablyMeant("Debg", known), "Debug");
}

TEST(Names, NothingIsMeantByAStranger) {
    EXPECT_EQ(probablyMeant("Vendor", known), std::nullopt);
    EXPECT_EQ(probablyMeant("", known), std::nullopt);
    EXPECT_EQ(probablyMeant(std::string(100'000, 'a'), known), std::nullopt);
}

TEST(Names, ShellReadsWhatItExpandsBetweenDoubleQuotes) {
    for (const char *name : {"a\"b", "a$b", "a`b", "a\\b", "a\nb"})
        EXPECT_TRUE(isReadOtherwiseByShell(name)) << name;
    EXPECT_FALSE(isReadOtherwiseByShell("Épreuves & Größen; 'x' *.zip"));
}

} // namespace
} // namespace vant::media
