#include "base/Languages.hpp"

#include "StringTables.hpp"

#include <filesystem>
#include <gtest/gtest.h>
#include <set>

namespace fs = std::filesystem;

namespace vant {
namespace {

using Texts = std::vector<std::string>;

Texts column(std::string_view Language::*member) {
    Texts texts;
    for (const Language &language : languages())
        texts.emplace_back(language.*member);
    return texts;
}

TEST(Languages, CodesAndFoldersAreNamedOnce) {
    std::set<std::string_view> codes;
    std::set<std::string_view> folders;
    for (const Language &language : languages()) {
        EXPECT_TRUE(codes.insert(language.code).second) << language.code;
        EXPECT_TRUE(folders.insert(language.folder).second) << language.folder;
        EXPECT_EQ(languageOfCode(language.code), &language);
        EXPECT_EQ(languageOfLocale(language.folder), &language);
    }
    EXPECT_EQ(languages().front().code, "EN");
}

TEST(Languages, CodesAreComparedExactly) {
    for (const char *code : {"", "en", "EN ", "XX", "French"})
        EXPECT_EQ(languageOfCode(code), nullptr) << code;
}

TEST(Languages, ALocaleBelongsToTheLanguageItBeginsWith) {
    EXPECT_EQ(languageOfLocale("fr-CA")->code, "FN");
    EXPECT_EQ(languageOfLocale("zh-Hant-TW")->code, "CT");
    for (const char *locale : {"", "z", "zh", "zh-Han", "sv"})
        EXPECT_EQ(languageOfLocale(locale), nullptr) << locale;
}

TEST(Languages, ThePaneHasAFolderForEachAndNoOther) {
    EXPECT_EQ(test::lacking(column(&Language::folder), test::languageFolders(VANT_RESOURCES)), Texts{});
    EXPECT_EQ(test::lacking(test::languageFolders(VANT_RESOURCES), column(&Language::folder)), Texts{});
}

TEST(Languages, TheReferenceHostHasAFolderForEachAndNoOther) {
    EXPECT_EQ(test::lacking(column(&Language::folder), test::languageFolders(VANT_HOST_RESOURCES)), Texts{});
    EXPECT_EQ(test::lacking(test::languageFolders(VANT_HOST_RESOURCES), column(&Language::folder)), Texts{});
}

// The host's string tables tell the pane the code, and the run command reads its choices there.
TEST(Languages, TheReferenceHostTellsTheCodeOfEach) {
    for (const Language &language : languages()) {
        auto table = test::readTable({VANT_HOST_RESOURCES, "Localizable"}, std::string(language.folder));
        EXPECT_EQ(table.strings["Language Setting"], language.code) << language.folder;
    }
}

TEST(Languages, EachHasAKeptPictureAndNoOtherHas) {
    Texts pictures;
    for (const auto &entry : fs::directory_iterator(VANT_PICTURES))
        if (entry.path().extension() == ".png")
            pictures.push_back(entry.path().stem());
    EXPECT_EQ(test::lacking(column(&Language::code), pictures), Texts{});
    EXPECT_EQ(test::lacking(pictures, column(&Language::code)), Texts{});
}

} // namespace
} // namespace vant
