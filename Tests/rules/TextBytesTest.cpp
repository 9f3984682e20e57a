#include "base/TextBytes.hpp"

#include <gtest/gtest.h>

using namespace std::string_view_literals;

TEST(TextBytes, UTF8IsAnyTextOfWholeCharacters) {
    for (const std::string_view text :
         {""sv, "plain"sv, "nul \0 byte"sv, "\xC3\xA9"sv, "\xE2\x80\xA6"sv, "\xF0\x9F\x98\x80"sv,
          "\xEF\xBB\xBFmarked"sv, "\xEF\xBF\xBE"sv, "\xF4\x8F\xBF\xBF"sv})
        EXPECT_TRUE(vant::isUTF8(text)) << text;
}

TEST(TextBytes, UTF8IsNotWhatIsCutOverlongOrNoCharacter) {
    for (const std::string_view text : {"\xC3"sv, "\xE2\x80"sv, "\xF0\x9F\x98"sv, "\xC3("sv, "\x80"sv, "\xC0\xAF"sv,
                                        "\xE0\x80\xAF"sv, "\xF0\x80\x80\xAF"sv, "\xED\xA0\x80"sv, "\xED\xBF\xBF"sv,
                                        "\xF4\x90\x80\x80"sv, "\xF8\x88\x80\x80\x80"sv, "\xFF\xFE"sv, "caf\xE9"sv})
        EXPECT_FALSE(vant::isUTF8(text)) << text;
}

TEST(TextBytes, MarksAreKnownByTheirBytes) {
    EXPECT_TRUE(vant::isMarkedUTF16("\xFF\xFE("sv));
    EXPECT_TRUE(vant::isMarkedUTF16("\xFE\xFF"sv));
    EXPECT_FALSE(vant::isMarkedUTF16("\xFF"sv));
    EXPECT_FALSE(vant::isMarkedUTF16("\xEF\xBB\xBF"sv));
    EXPECT_EQ(vant::withoutUTF8Mark("\xEF\xBB\xBF( a )"sv), "( a )");
    EXPECT_EQ(vant::withoutUTF8Mark("( a )"sv), "( a )");
    EXPECT_EQ(vant::withoutUTF8Mark("\xEF\xBB"sv), "\xEF\xBB");
}
