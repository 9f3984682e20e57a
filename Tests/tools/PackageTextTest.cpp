#include "PackageText.hpp"

#include <gtest/gtest.h>

namespace vant {

TEST(PackageText, ReadsAnAttributeInEitherQuotes) {
    EXPECT_EQ(attributeIn(R"(<pkg-info a="1" install-location="/Library/X Y"/>)", "pkg-info", "install-location"),
              "/Library/X Y");
    EXPECT_EQ(attributeIn("<pkg-info install-location = '/A'>", "pkg-info", "install-location"), "/A");
}

TEST(PackageText, DecodesTheFiveEntities) {
    EXPECT_EQ(attributeIn(R"(<p a="&lt;&gt;&amp;amp;&quot;&apos;&other;"/>)", "p", "a"), "<>&amp;\"'&other;");
}

TEST(PackageText, AnElementIsMatchedByItsWholeName) {
    EXPECT_EQ(attributeIn(R"(<pkg-info-extra a="1"/><pkg-info a="2"/>)", "pkg-info", "a"), "2");
}

TEST(PackageText, AnAttributeIsMatchedByItsWholeName) {
    EXPECT_EQ(attributeIn(R"(<p my-a="1" a="2"/>)", "p", "a"), "2");
}

TEST(PackageText, WhatIsMissingOrBrokenIsNothing) {
    for (const auto *xml : {"", "<", "<p", "<p>", "<p a>", "<p a=>", "<p a=1>", "<p a=\"1", "<p b=\"a\">"})
        EXPECT_FALSE(attributeIn(xml, "p", "a")) << xml;
}

TEST(PackageText, CommentsArePassedOver) {
    EXPECT_EQ(attributeIn(R"(<!-- <p a="1"/> --><p a="2"/>)", "p", "a"), "2");
    EXPECT_FALSE(attributeIn(R"(<!-- <p a="1"/>)", "p", "a"));
}

TEST(PackageText, ListsTheTextsOfAnElementInOrder) {
    const std::vector<std::string> expected{"one", "two & three"};
    EXPECT_EQ(textsIn("<t>one</t><t/><t> </t><u>x</u><t id='1'> two &amp; three </t>", "t"), expected);
}

TEST(PackageText, ADistributionNamesItsComponentsOnceEach) {
    const std::vector<std::string> expected{"Some Name.pkg", "b.pkg", "100%.pkg"};
    EXPECT_EQ(componentsOf("<pkg-ref id='a'/><pkg-ref id='a'>#Some%20Name.pkg</pkg-ref><pkg-ref id='b'>b.pkg</pkg-ref>"
                           "<pkg-ref id='a'>#Some%20Name.pkg</pkg-ref><pkg-ref id='c'>#100%.pkg</pkg-ref>"),
              expected);
}

TEST(PackageText, ReadsAStringOfAPropertyList) {
    const auto *plist = "<plist><dict><key>A</key><string>no</string><key>B &amp; C</key>\n<string>/Lib</string>"
                        "<key>D</key><true/><key>E</key><string>e</string></dict></plist>";
    EXPECT_EQ(propertyIn(plist, "B & C"), "/Lib");
    EXPECT_FALSE(propertyIn(plist, "D"));
    EXPECT_FALSE(propertyIn(plist, "F"));
    EXPECT_FALSE(propertyIn("bplist00", "B"));
}

} // namespace vant
