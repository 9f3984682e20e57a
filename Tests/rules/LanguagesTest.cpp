#include "base/Languages.hpp"

#include "StringTables.hpp"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>

namespace fs = std::filesystem;

namespace vant {
namespace {

/// The folders that the table names, ascending as `languageFolders` gives them.
std::vector<std::string> namedFolders() {
    std::vector<std::string> folders;
    for (const Language &language : languages())
        folders.emplace_back(language.folder);
    std::ranges::sort(folders);
    return folders;
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
    EXPECT_EQ(test::languageFolders(VANT_RESOURCES), namedFolders());
}

TEST(Languages, TheReferenceHostHasAFolderForEachAndNoOther) {
    EXPECT_EQ(test::languageFolders(VANT_HOST_RESOURCES), namedFolders());
}

// The host's string tables tell the pane the code, and the run command reads its choices there.
TEST(Languages, TheReferenceHostTellsTheCodeOfEach) {
    for (const Language &language : languages()) {
        auto table = test::readTable({VANT_HOST_RESOURCES, "Localizable"}, std::string(language.folder));
        EXPECT_EQ(table.strings["Language Setting"], language.code) << language.folder;
    }
}

TEST(Languages, EachHasAKeptPictureAndNoOtherHas) {
    std::set<std::string> pictures;
    for (const auto &entry : fs::directory_iterator(VANT_PICTURES))
        if (entry.path().extension() == ".png")
            pictures.insert(entry.path().stem());
    std::set<std::string> codes;
    for (const Language &language : languages())
        codes.emplace(language.code);
    EXPECT_EQ(pictures, codes);
}

} // namespace
} // namespace vant
