#include "plan/Contents.hpp"
#include "site/ContentKind.hpp"

#include <gtest/gtest.h>

namespace vant::media {
namespace {

using Texts = std::vector<std::string>;

Texts told(const std::vector<Content> &contents) {
    Texts texts;
    for (const Content &content : contents)
        texts.push_back(content.item + ": " + std::string(outcomeName(content.outcome)));
    return texts;
}

TEST(Contents, WhatLooksLikeAPackageIsTold) {
    const Texts items{"a",
                      "a/Fax.pkg",
                      "a/Fax.PKG",
                      "Other.pkg",
                      "S.mpkg",
                      "V.app",
                      "Net Setter.app",
                      "Uninstaller.pkg",
                      "Quorvel RXM2 Installer",
                      "Read me.txt"};
    EXPECT_EQ(told(contentsOf(items)), (Texts{"a/Fax.pkg: installed", "a/Fax.PKG: passed over", "Other.pkg: set aside",
                                              "S.mpkg: set aside", "V.app: set aside", "Net Setter.app: passed over",
                                              "Uninstaller.pkg: passed over", "Quorvel RXM2 Installer: set aside"}));
    EXPECT_EQ(packagesAmong(items), Texts{"a/Fax.pkg"});
}

TEST(Contents, TheInnermostHolderIsNamed) {
    const auto contents = contentsOf({"S.mpkg/P/T.pkg/x/Fax.pkg", "/Fax.pkg", "Packages.d/Fax.pkg"});
    EXPECT_EQ(contents.at(0).inside, "S.mpkg/P/T.pkg");
    EXPECT_EQ(contents.at(1).inside, "");
    EXPECT_EQ(contents.at(2).inside, "");
}

TEST(Contents, WhatThePlanDropsIsDroppedFromItsOwnArchiveAlone) {
    Plan plan;
    plan.dropped = {{{"Vantrel/Download/A/Scanmate.pkg", "Scanmate.pkg", Origin::Web, "A.zip"}, DropRule::Legacy}};
    EXPECT_EQ(told(contentsOf({"Scanmate.pkg"}, plan, "A.zip")), Texts{"Scanmate.pkg: dropped"});
    EXPECT_EQ(told(contentsOf({"Scanmate.pkg"}, plan, "B.zip")), Texts{"Scanmate.pkg: installed"});
}

TEST(Contents, NamesThatInstallAreThoseThatTheWebFlowKeeps) {
    EXPECT_EQ(installedNames(),
              (Texts{"Printer Driver.pkg", "Hueforge.pkg", "Scanwick.pkg", "Printer Manager.pkg", "Fax.pkg"}));
}

TEST(ContentKind, FirstBytesTellTheForm) {
    using enum ContentKind;
    EXPECT_EQ(contentKind(""), Empty);
    EXPECT_EQ(contentKind("PK\x03\x04 and more"), Zip);
    EXPECT_EQ(contentKind("070707000001"), Cpio);
    EXPECT_EQ(contentKind("\x1f\x8b\x08"), Compressed);
    EXPECT_EQ(contentKind("xar!"), FlatPackage);
    EXPECT_EQ(contentKind("\r\n<!DOCTYPE HTML PUBLIC"), WebPage);
    EXPECT_EQ(contentKind("hello"), Unknown);
}

TEST(ContentKind, AZipIsExpandedByItsEndingAlone) {
    EXPECT_TRUE(suits(ContentKind::Zip, ArchiveKind::Zip));
    EXPECT_FALSE(suits(ContentKind::Zip, ArchiveKind::Cpio));
    EXPECT_FALSE(suits(ContentKind::Compressed, ArchiveKind::Zip));
    EXPECT_TRUE(suits(ContentKind::Compressed, ArchiveKind::Cpio));
    EXPECT_FALSE(suits(ContentKind::WebPage, ArchiveKind::Cpio));
}

} // namespace
} // namespace vant::media
