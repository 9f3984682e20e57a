#include "Languages.hpp"

#include <gtest/gtest.h>

using vant::host::withLanguageFolder;
using Arguments = std::vector<std::string>;

TEST(HostLanguages, AKnownCodeBecomesThePlatformsSetting) {
    EXPECT_EQ(withLanguageFolder({"host", "-Language", "CP", "-Debug", "YES"}, "-NSLanguages"),
              (Arguments{"host", "-Language", "CP", "-Debug", "YES", "-NSLanguages", "(\"zh-Hans\")"}));
}

TEST(HostLanguages, TheLastCodeHolds) {
    EXPECT_EQ(withLanguageFolder({"host", "-Language", "CP", "-Language", "KR"}, "-AppleLanguages").back(), "(\"ko\")");
}

TEST(HostLanguages, ArgumentsWithoutAKnownCodeStayAsTheyAre) {
    for (const Arguments &arguments :
         {Arguments{}, Arguments{"host"}, Arguments{"host", "-Language"}, Arguments{"host", "-Language", "XX"}})
        EXPECT_EQ(withLanguageFolder(arguments, "-NSLanguages"), arguments);
}
