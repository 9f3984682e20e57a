#include "GNUstep/authorization/PanelTexts.hpp"

#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace vant::test {
namespace {

std::string_view languageFor(const std::vector<std::string> &languages) {
    return panelTexts(languages).language;
}

} // namespace

TEST(PanelTexts, EveryLanguageHasAllItsTexts) {
    std::set<std::string_view> languages;
    for (const PanelTexts &texts : allPanelTexts()) {
        languages.insert(texts.language);
        for (const auto text : {texts.title, texts.headline, texts.detail, texts.userName, texts.grant, texts.cancel})
            EXPECT_FALSE(text.empty()) << texts.language;
        EXPECT_NE(texts.headline.find("%@"), std::string_view::npos) << texts.language;
    }
    EXPECT_EQ(languages,
              (std::set<std::string_view>{"en", "fr", "de", "it", "es", "pt", "nl", "ko", "zh-Hans", "zh-Hant"}));
}

TEST(PanelTexts, NoTextOfAnotherLanguageIsEnglish) {
    for (const PanelTexts &texts : allPanelTexts().subspan(1)) {
        EXPECT_NE(texts.title, allPanelTexts().front().title) << texts.language;
        EXPECT_NE(texts.headline, allPanelTexts().front().headline) << texts.language;
        EXPECT_NE(texts.detail, allPanelTexts().front().detail) << texts.language;
        EXPECT_NE(texts.userName, allPanelTexts().front().userName) << texts.language;
        EXPECT_NE(texts.cancel, allPanelTexts().front().cancel) << texts.language;
    }
}

TEST(PanelTexts, LanguageIsFoundByCodeRegionAndName) {
    const struct {
        const char *language;
        const char *code;
    } rows[] = {
        {"en", "en"},           {"fr", "fr"},           {"de", "de"},         {"it", "it"},
        {"es", "es"},           {"pt", "pt"},           {"nl", "nl"},         {"ko", "ko"},
        {"zh-Hans", "zh-Hans"}, {"zh-Hant", "zh-Hant"}, {"de_AT", "de"},      {"pt-BR", "pt"},
        {"zh_TW", "zh-Hant"},   {"zh-HK", "zh-Hant"},   {"zh_CN", "zh-Hans"}, {"zh_Hant_TW", "zh-Hant"},
        {"German", "de"},       {"Dutch", "nl"},        {"Korean", "ko"},     {"TraditionalChinese", "zh-Hant"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(languageFor({row.language}), row.code) << row.language;
}

TEST(PanelTexts, FirstLanguageThatThereAreTextsForIsTaken) {
    EXPECT_EQ(languageFor({"ja", "ko", "en"}), "ko");
    EXPECT_EQ(languageFor({"ja", "den"}), "en");
    EXPECT_EQ(languageFor({}), "en");
}

} // namespace vant::test
