#include "Languages.hpp"

#include <gtest/gtest.h>
#include <set>

using vant::host::languageFolder;
using vant::host::withLanguageFolder;
using Arguments = std::vector<std::string>;

TEST(HostLanguages, TenCodesHaveTenFolders) {
    std::set<std::string_view> folders;
    for (const char *code : {"EN", "FN", "GR", "IT", "SP", "PT", "DT", "KR", "CP", "CT"}) {
        const auto folder = languageFolder(code);
        ASSERT_TRUE(folder.has_value()) << code;
        folders.insert(*folder);
    }
    EXPECT_EQ(folders.size(), 10U);
    EXPECT_EQ(languageFolder("GR"), "de");
    EXPECT_EQ(languageFolder("CT"), "zh-Hant");
}

TEST(HostLanguages, OtherCodesHaveNone) {
    for (const char *code : {"", "en", "EN ", "XX", "French"})
        EXPECT_FALSE(languageFolder(code).has_value()) << code;
}

TEST(HostLanguages, AKnownCodeBecomesThePlatformsSetting) {
    EXPECT_EQ(withLanguageFolder({"host", "-Language", "CP", "-Debug", "YES"}),
              (Arguments{"host", "-Language", "CP", "-Debug", "YES", "-NSLanguages", "(\"zh-Hans\")"}));
}

TEST(HostLanguages, TheLastCodeHolds) {
    EXPECT_EQ(withLanguageFolder({"host", "-Language", "CP", "-Language", "KR"}).back(), "(\"ko\")");
}

TEST(HostLanguages, ArgumentsWithoutAKnownCodeStayAsTheyAre) {
    for (const Arguments &arguments :
         {Arguments{}, Arguments{"host"}, Arguments{"host", "-Language"}, Arguments{"host", "-Language", "XX"}})
        EXPECT_EQ(withLanguageFolder(arguments), arguments);
}
