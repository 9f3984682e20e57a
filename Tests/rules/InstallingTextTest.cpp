#include "install/status/InstallingText.hpp"

#include "base/Languages.hpp"

#include <algorithm>
#include <gtest/gtest.h>

using vant::installingText;

namespace {

struct LanguageCase {
    std::string_view code;
    std::string_view trace;
    std::string_view text;
};

// clang-format off
constexpr LanguageCase languageCases[] = {
    {"EN",  "Language 1",                      "Installing Pressdeck..."},
    {"FN",  "Language 1",                      "Installing Pressdeck..."},
    {"CP",  "Language 1",                      "Installing Pressdeck..."},
    {"CT",  "Language 1",                      "Installing Pressdeck..."},
    {"DT",  "Language 1",                      "Installing Pressdeck..."},
    {"PT",  "Language 1",                      "Installing Pressdeck..."},
    {"IT",  "Language 1",                      "Installing Pressdeck..."},
    {"SP",  "Language 1",                      "Installing Pressdeck..."},
    {"KR",  "Language 2: Korean and German",   "Pressdeck Installing..."},
    {"GR",  "Language 2: Korean and German",   "Pressdeck Installing..."},
    {"",    "Language Default: English",       "Installing Pressdeck..."},
    {"en",  "Language Default: English",       "Installing Pressdeck..."},
    {"kr",  "Language Default: English",       "Installing Pressdeck..."},
    {"EN ", "Language Default: English",       "Installing Pressdeck..."},
    {"GRX", "Language Default: English",       "Installing Pressdeck..."},
    {"XX",  "Language Default: English",       "Installing Pressdeck..."},
    {"Language Setting", "Language Default: English", "Installing Pressdeck..."},
};
// clang-format on

} // namespace

TEST(InstallingText, TheLanguageCodeDecidesTheWordOrder) {
    for (const LanguageCase &row : languageCases) {
        const auto shown = installingText(row.code, "Installing", "Pressdeck");
        EXPECT_EQ(shown.text, row.text) << "code: \"" << row.code << '"';
        EXPECT_EQ(shown.trace, row.trace) << "code: \"" << row.code << '"';
    }
}

TEST(InstallingText, EveryLanguageHasItsCase) {
    for (const vant::Language &language : vant::languages())
        EXPECT_EQ(std::ranges::count(languageCases, language.code, &LanguageCase::code), 1)
            << "no case for " << language.code;
}

TEST(InstallingText, AnEmptyNameStillHasItsBlankAndEllipsis) {
    EXPECT_EQ(installingText("EN", "Installing", "").text, "Installing ...");
    EXPECT_EQ(installingText("GR", "Installieren", "").text, " Installieren...");
}

TEST(InstallingText, NamesAndWordsOfAnyScriptStandAsTheyAre) {
    EXPECT_EQ(installingText("KR", "설치 중", "스캐너 %@").text, "스캐너 %@ 설치 중...");
}
