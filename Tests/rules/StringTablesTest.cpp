#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

const char *const languages[] = {"en", "fr", "de", "it", "es", "pt", "nl", "ko", "zh-Hans", "zh-Hant"};

struct Table {
    std::string bytes;
    std::vector<std::string> keys;
    std::map<std::string, std::string> strings;
};

Table readTable(const std::string &language) {
    const fs::path file = fs::path(VANT_RESOURCES) / (language + ".lproj") / "Localizable-Inst.strings";
    std::ifstream in(file, std::ios::binary);
    Table table;
    table.bytes.assign(std::istreambuf_iterator<char>(in), {});
    static const std::regex entry(R"re("((?:[^"\\]|\\.)*)"\s*=\s*"((?:[^"\\]|\\.)*)"\s*;)re");
    for (std::sregex_iterator at(table.bytes.begin(), table.bytes.end(), entry), end; at != end; ++at) {
        table.keys.push_back((*at)[1]);
        table.strings[(*at)[1]] = (*at)[2];
    }
    return table;
}

std::multiset<std::string> placeholders(const std::string &text) {
    static const std::regex placeholder(R"(%(?:\d+\$)?[@a-zA-Z]|__[A-Z]+__)");
    std::multiset<std::string> found;
    for (std::sregex_iterator at(text.begin(), text.end(), placeholder), end; at != end; ++at)
        found.insert(at->str());
    return found;
}

} // namespace

TEST(StringTables, EveryLanguageHasEveryKeyOnceAndNoOther) {
    std::vector<std::string> wanted = readTable("en").keys;
    std::sort(wanted.begin(), wanted.end());
    ASSERT_FALSE(wanted.empty());
    for (const char *language : languages) {
        std::vector<std::string> keys = readTable(language).keys;
        std::sort(keys.begin(), keys.end());
        EXPECT_EQ(std::adjacent_find(keys.begin(), keys.end()), keys.end()) << language << " has a key twice";
        EXPECT_EQ(keys, wanted) << language;
    }
}

TEST(StringTables, HoldTheKeysThatThePaneLooksUp) {
    const Table english = readTable("en");
    for (const char *key : {"Connecting", "Downloading", "Installing", "PrinterComponent", "ScannerComponent",
                            "PressdeckComponent", "PCFAXComponent", "PreviousPage", "NextPage", "PageIndicator",
                            "ComponentTable", "SupportLink", "SupportAddress"})
        EXPECT_TRUE(english.strings.contains(key)) << key;
}

TEST(StringTables, NoTextIsEmptyAndPlaceholdersAreTheSameInEveryLanguage) {
    const Table english = readTable("en");
    for (const char *language : languages) {
        for (const auto &[key, text] : readTable(language).strings) {
            EXPECT_FALSE(text.empty()) << language << ": " << key;
            EXPECT_EQ(placeholders(text), placeholders(english.strings.at(key))) << language << ": " << key;
        }
    }
}

// Both platforms take the tables for UTF-8 without doubt only behind the mark.
TEST(StringTables, BeginWithAByteOrderMark) {
    for (const char *language : languages)
        EXPECT_TRUE(readTable(language).bytes.starts_with(byteOrderMark)) << language;
}

// The status line puts an ellipsis behind these itself.
TEST(StringTables, StatusWordsBringNoEllipsisOfTheirOwn) {
    for (const char *language : languages) {
        const Table table = readTable(language);
        for (const char *key : {"Connecting", "Downloading", "Installing", "PrinterComponent", "ScannerComponent"}) {
            const std::string &word = table.strings.at(key);
            EXPECT_FALSE(word.ends_with(".") || word.ends_with("…") || word.ends_with(" ")) << language << ": " << word;
        }
    }
}
