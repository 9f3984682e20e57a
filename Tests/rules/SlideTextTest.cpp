#include "slides/SlideText.hpp"
#include <gtest/gtest.h>
#include <string_view>

using vant::textBetween;
using vant::withVendorName;

namespace {

struct ElementCase {
    std::string_view name;
    std::string_view content;
    std::string_view title;
};

constexpr ElementCase elementCases[] = {
    {"one element", "<TITLE>A</TITLE>", "A"},
    {"two complete elements yield the first", "<TITLE>A</TITLE><TITLE>B</TITLE>", "A"},
    {"two opening tags before one closing tag yield the last", "x<TITLE>A<TITLE>B</TITLE>", "B"},
    {"no tags at all yield the whole text", "plain\ntext", "plain\ntext"},
    {"a message alone yields all of itself, tags included", "<MESSAGE>M</MESSAGE>", "<MESSAGE>M</MESSAGE>"},
    {"no closing tag yields the rest", "x<TITLE>A and more", "A and more"},
    {"no opening tag yields all before the closing tag", "head</TITLE>tail", "head"},
    {"nothing between the tags is empty", "<TITLE></TITLE>", ""},
    {"blanks, line ends and entities stay", "<TITLE> A &amp; B\r\n</TITLE>", " A &amp; B\r\n"},
    {"case counts", "<title>A</title>", "<title>A</title>"},
    {"a tag with an attribute is no tag", "<TITLE lang=\"en\">A</TITLE>", "<TITLE lang=\"en\">A"},
    {"the closing tag may come first", "</TITLE><TITLE>A</TITLE>", ""},
    {"an empty file", "", ""},
    {"text of many bytes", "<TITLE>토너 碳粉 é</TITLE>", "토너 碳粉 é"},
};

struct VendorCase {
    std::string_view text;
    std::string_view vendor;
    std::string_view filled;
};

constexpr VendorCase vendorCases[] = {
    {"Genuine __MFG__ toner", "Quorvel", "Genuine Quorvel toner"},
    {"__MFG__ and __MFG__", "Quorvel", "Quorvel and Quorvel"},
    {"__MFG____MFG__", "Q", "QQ"},
    {"___MFG__", "Q", "_Q"},
    {"no placeholder", "Quorvel", "no placeholder"},
    {"__mfg__ __MFG_", "Quorvel", "__mfg__ __MFG_"},
    {"by __MFG__.", "", "by ."},
    {"__MFG__", "__MFG__", "__MFG__"},
    {"", "Quorvel", ""},
};

} // namespace

TEST(SlideText, IsWhatStandsBetweenTheLastOpeningAndTheFirstClosingTag) {
    for (const ElementCase &each : elementCases)
        EXPECT_EQ(textBetween(each.content, "<TITLE>", "</TITLE>"), each.title) << each.name;
}

TEST(SlideText, TitleAndMessageAreFoundSideBySide) {
    constexpr std::string_view content = "<TITLE>T</TITLE>\n<MESSAGE>M</MESSAGE>";
    EXPECT_EQ(textBetween(content, "<TITLE>", "</TITLE>"), "T");
    EXPECT_EQ(textBetween(content, "<MESSAGE>", "</MESSAGE>"), "M");
}

TEST(VendorName, TakesThePlaceOfEveryPlaceholder) {
    for (const VendorCase &each : vendorCases)
        EXPECT_EQ(withVendorName(each.text, each.vendor), each.filled) << each.text;
}
