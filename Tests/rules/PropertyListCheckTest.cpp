#include "base/PropertyListCheck.hpp"

#include <chrono>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;

std::string repeated(std::string_view text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

struct NestingCase {
    std::string_view text;
    std::size_t nesting;
};

TEST(PropertyListCheck, MarkupNestsByItsOpenElements) {
    constexpr NestingCase cases[] = {
        {"", 0},
        {"text", 0},
        {"<plist><array></array></plist>", 2},
        {"<a><b></b><c></c></a>", 2},
        {"<a/><b /><c/>", 0},
        {"<a><b/></a>", 1},
        {"<?xml version=\"1.0\"?><!DOCTYPE plist PUBLIC \"a\" \"b\"><plist></plist>", 1},
        {"<!-- <a><a><a> --><b></b>", 1},
        {"<![CDATA[<a><a>]]><b></b>", 1},
        {"<?a <a><a>?><b></b>", 1},
        {"</a></a><b></b>", 1},
        {"<a x=\"/>\"><b>", 2},
        {"<a x='>'/><b>", 1},
        {"<a x=\"><b><c>", 3},
        {"<a", 1},
        {"<<<", 3},
        {"<!--", 0},
        {"<!-->-->", 0},
        {"<", 1},
    };
    for (const NestingCase &row : cases)
        EXPECT_EQ(vant::markupNesting(row.text), row.nesting) << row.text;
}

TEST(PropertyListCheck, OldStyleTextNestsByItsBrackets) {
    constexpr NestingCase cases[] = {
        {"", 0},
        {"( a, ( b ), { c = ( d ); } )", 3},
        {"{ \"(((\" = \"{\\\"{\"; }", 1},
        {")))( a )", 1},
        {"/* ((( */ ( a )", 1},
        {"// (((\n( a )", 1},
        {"( a, // (((\n( b ) )", 2},
        {"( http://host/a, ( b ) )", 2},
        {"( /a//b, ( c ) )", 2},
        {"\"((", 0},
        {"\"\\", 0},
        {"/* ((", 0},
        {"/", 0},
    };
    for (const NestingCase &row : cases)
        EXPECT_EQ(vant::bracketNesting(row.text), row.nesting) << row.text;
}

TEST(PropertyListCheck, TextMayNestToTheLimitAndNoDeeper) {
    const std::size_t limit = vant::deepestPropertyList;
    const auto markup = [](std::size_t depth) {
        return "<?xml version=\"1.0\"?>" + repeated("<array>", depth) + repeated("</array>", depth);
    };
    EXPECT_TRUE(vant::isPropertyListSafeToParse(markup(limit)));
    EXPECT_FALSE(vant::isPropertyListSafeToParse(markup(limit + 1)));
    EXPECT_FALSE(vant::isPropertyListSafeToParse(" \n\t" + markup(1000000)));
    EXPECT_TRUE(vant::isPropertyListSafeToParse(repeated("(", limit) + repeated(")", limit)));
    EXPECT_FALSE(vant::isPropertyListSafeToParse(repeated("(", limit + 1)));
    EXPECT_FALSE(vant::isPropertyListSafeToParse(repeated("{a=", 1000000)));
}

TEST(PropertyListCheck, ManyShallowEntriesAreSafe) {
    const std::string entry = "<dict><key>TYPE</key><dict><key>text</key><string>Scan Driver</string></dict></dict>";
    EXPECT_TRUE(vant::isPropertyListSafeToParse("<plist><array>" + repeated(entry, 100000) + "</array></plist>"));
    EXPECT_TRUE(vant::isPropertyListSafeToParse("(" + repeated("{ LOCATION = /a//b; },", 100000) + ")"));
    EXPECT_TRUE(vant::isPropertyListSafeToParse("(" + repeated("<0fbd>,", 100000) + ")"));
}

TEST(PropertyListCheck, TwoByteTextIsMeasuredToo) {
    const auto wide = [](std::string_view text, bool bigEndian) {
        std::string result = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
        for (const char c : text)
            result += bigEndian ? "\0"s + c : c + "\0"s;
        return result;
    };
    for (const bool bigEndian : {false, true}) {
        EXPECT_TRUE(vant::isPropertyListSafeToParse(wide("<plist><array/></plist>", bigEndian))) << bigEndian;
        EXPECT_FALSE(vant::isPropertyListSafeToParse(wide("<?xml?>" + repeated("<array>", 600), bigEndian)))
            << bigEndian;
    }
    EXPECT_FALSE(vant::isPropertyListSafeToParse("\xEF\xBB\xBF<?xml?>" + repeated("<a>", 600)));
}

TEST(PropertyListCheck, WhatIsNoPropertyListIsNotParsed) {
    EXPECT_FALSE(vant::isPropertyListSafeToParse(""));
    EXPECT_FALSE(vant::isPropertyListSafeToParse("\0\0\0"s));
    EXPECT_FALSE(vant::isPropertyListSafeToParse("\1abc"));
    EXPECT_FALSE(vant::isPropertyListSafeToParse("bplist"));
    EXPECT_FALSE(vant::isPropertyListSafeToParse("bplist00"));
}

std::string bigEndian(std::uint64_t value, std::size_t size) {
    std::string bytes(size, '\0');
    for (; size > 0; value >>= 8U)
        bytes[--size] = static_cast<char>(value & 0xFFU);
    return bytes;
}

/// A binary property list of given objects; what is not given is worked out, so that one thing at a time can be wrong.
struct Binary {
    std::vector<std::string> objects;
    std::vector<std::uint64_t> offsets;
    std::size_t offsetSize = 1;
    std::size_t referenceSize = 1;
    std::uint64_t top = 0;
    std::optional<std::uint64_t> count;
    std::optional<std::uint64_t> table;

    [[nodiscard]] std::string bytes() const {
        std::string file = "bplist00";
        std::vector<std::uint64_t> places;
        for (const std::string &object : objects) {
            places.push_back(file.size());
            file += object;
        }
        const std::uint64_t end = file.size();
        for (const std::uint64_t place : offsets.empty() ? places : offsets)
            file += bigEndian(place, offsetSize);
        return file + std::string(6, '\0') + static_cast<char>(offsetSize) + static_cast<char>(referenceSize) +
               bigEndian(count.value_or(objects.size()), 8) + bigEndian(top, 8) + bigEndian(table.value_or(end), 8);
    }
};

bool isSound(const Binary &list) {
    return vant::isBinaryPropertyListSound(list.bytes());
}

TEST(BinaryPropertyList, SoundListsOfEveryTypeAreAccepted) {
    EXPECT_TRUE(isSound({.objects = {"\x08"}}));
    EXPECT_TRUE(isSound({.objects = {"\xA0"}}));
    EXPECT_TRUE(isSound(
        {.objects = {"\xAA\1\2\3\4\5\6\7\x8\x9\xA", "\x09", "\x10\x05", "\x13\0\0\0\0\0\0\0\1"s, "\x22\0\0\0\0"s,
                     "\x33\0\0\0\0\0\0\0\0"s, "\x42\0\0"s, "\x51z", "\x61\0a"s, "\x80\1", "\xD1\7\2"}}));
    EXPECT_TRUE(isSound({.objects = {"\x5F\x10\x10" + std::string(16, 'x')}}));
    EXPECT_TRUE(isSound({.objects = {"\xA2\1\1", "\xA2\2\2", "\x51z"}})) << "shared objects are ordinary";
}

TEST(BinaryPropertyList, ObjectsOutsideTheFileAreRefused) {
    EXPECT_FALSE(isSound({.objects = {"\xA1\1", "\x51z"}, .offsets = {8, 200}}));
    EXPECT_FALSE(isSound({.objects = {"\x51z"}, .offsets = {0}}));
    EXPECT_FALSE(isSound({.objects = {"\xA1\x77"}}));
    EXPECT_FALSE(isSound({.objects = {"\x51z"}, .top = 1}));
    EXPECT_FALSE(isSound({.objects = {"\x51z"}, .count = 2}));
    EXPECT_FALSE(isSound({.objects = {"\x51z"}, .count = std::uint64_t{1} << 60U}));
    EXPECT_FALSE(isSound({.objects = {"\x51z"}, .table = 7}));
    EXPECT_FALSE(isSound({.objects = {"\x51z"}, .table = 12}));
    EXPECT_FALSE(isSound({.objects = {"\x51z"}, .table = std::uint64_t{1} << 60U}));
}

TEST(BinaryPropertyList, LengthsBeyondTheFileAreRefused) {
    for (const char *object :
         {"\x52z", "\x61z", "\x42z", "\xA2\1", "\xD1\1", "\x13\0", "\x33", "\x5F", "\x5F\x10", "\x5F\x51"})
        EXPECT_FALSE(isSound({.objects = {object}})) << testing::PrintToString(object);
    for (const char marker : {'\x4F', '\x5F', '\x6F', '\xAF', '\xDF'})
        for (const char high : {'\x7F', '\xFF', '\x80', '\x00'})
            EXPECT_FALSE(isSound({.objects = {std::string{marker, '\x13', high} + "\xFF\xFF\xFF\xFF\xFF\xFF\xFF"}}))
                << testing::PrintToString(marker);
}

TEST(BinaryPropertyList, UnknownMarkersAndSizesAreRefused) {
    for (const char *object : {"\x90", "\xE0", "\xF0", "\x1F", "\x3F"})
        EXPECT_FALSE(isSound({.objects = {object}})) << testing::PrintToString(object);
    EXPECT_FALSE(isSound({.objects = {"\x5F\x14" + std::string(16, '\0')}}));
    for (const std::size_t size : {0U, 9U, 255U}) {
        EXPECT_FALSE(isSound({.objects = {"\x51z"}, .offsetSize = size})) << size;
        EXPECT_FALSE(isSound({.objects = {"\x51z"}, .referenceSize = size})) << size;
    }
}

TEST(BinaryPropertyList, ObjectsThatContainThemselvesAreRefused) {
    EXPECT_FALSE(isSound({.objects = {"\xA1\0"s}}));
    EXPECT_FALSE(isSound({.objects = {"\xA1\1", "\xD1\2\0"s, "\x51z"}}));
}

TEST(BinaryPropertyList, ContainersMayNestToTheLimitAndNoDeeper) {
    const auto nested = [](std::size_t depth) {
        Binary list{.offsetSize = 3, .referenceSize = 3};
        for (std::size_t i = 1; i < depth; ++i)
            list.objects.push_back('\xA1' + bigEndian(i, 3));
        list.objects.emplace_back("\xA0");
        return list;
    };
    EXPECT_TRUE(isSound(nested(vant::deepestPropertyList)));
    EXPECT_FALSE(isSound(nested(vant::deepestPropertyList + 1)));
    EXPECT_FALSE(isSound(nested(1000000)));
}

TEST(BinaryPropertyList, AListThatUnfoldsBeyondMemoryIsRefused) {
    Binary doubling;
    for (char i = 1; i <= 40; ++i)
        doubling.objects.push_back({'\xA2', i, i});
    doubling.objects.emplace_back("\xA0");
    EXPECT_FALSE(isSound(doubling));
}

TEST(BinaryPropertyList, ContainersThatShareOneLongListOfReferencesAreRefusedQuickly) {
    Binary shared{.objects = {"\xAF\x12" + bigEndian(30000, 4)}, .offsetSize = 4, .referenceSize = 2};
    for (std::uint64_t i = 1; i <= 30000; ++i)
        shared.objects.front() += bigEndian(i, 2);
    shared.objects.front() += std::string(10, '\xA0');
    shared.offsets.assign(30001, 8);
    shared.count = 30001;
    EXPECT_FALSE(isSound(shared));
}

TEST(BinaryPropertyList, EveryTruncationIsRefused) {
    const std::string whole =
        Binary{.objects = {"\xA2\1\2", "\xD1\3\4", "\x10\3", "\x54text", "\x5BScan Driver"}}.bytes();
    ASSERT_TRUE(vant::isBinaryPropertyListSound(whole));
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(vant::isBinaryPropertyListSound(whole.substr(0, length))) << length;
}

TEST(PropertyListCheck, CostGrowsWithTheTextWhateverItHolds) {
    // Each of these made every "<" a reading to the end of the text. Quadratic work on them takes minutes.
    for (const std::string_view piece : {"<", "<'", "<\"", "<a '\"", "<!", "</"}) {
        const std::string text = "<plist>" + repeated(piece, 100000);
        const auto begin = std::chrono::steady_clock::now();
        static_cast<void>(vant::isPropertyListSafeToParse(text));
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10)) << piece;
    }
}

TEST(PropertyListCheck, ATagThatIsTooLongCountsAsOpening) {
    EXPECT_EQ(vant::markupNesting("<a x=\"" + std::string(200, 'x') + "\"/>"), 0U);
    EXPECT_EQ(vant::markupNesting("<a x=\"" + std::string(300, 'x') + "\"/>"), 1U);
}

} // namespace
