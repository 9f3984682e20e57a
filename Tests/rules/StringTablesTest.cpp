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

struct TableName {
    const char *folder;
    const char *name;
};

constexpr TableName paneTable = {VANT_RESOURCES, "Localizable-Inst"};

/// The tables of the pane and of the reference host.
constexpr TableName tables[] = {
    paneTable,
    {VANT_HOST_RESOURCES, "Localizable-Inst"},
    {VANT_HOST_RESOURCES, "Localizable"},
};

Table readTable(const TableName &which, const std::string &language) {
    const fs::path file = fs::path(which.folder) / (language + ".lproj") / (std::string(which.name) + ".strings");
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
    for (const TableName &each : tables) {
        std::vector<std::string> wanted = readTable(each, "en").keys;
        std::sort(wanted.begin(), wanted.end());
        ASSERT_FALSE(wanted.empty()) << each.folder << '/' << each.name;
        for (const char *language : languages) {
            std::vector<std::string> keys = readTable(each, language).keys;
            std::sort(keys.begin(), keys.end());
            EXPECT_EQ(std::adjacent_find(keys.begin(), keys.end()), keys.end()) << language << " has a key twice";
            EXPECT_EQ(keys, wanted) << each.name << ' ' << language;
        }
    }
}

TEST(StringTables, HoldTheKeysThatThePaneLooksUp) {
    const Table english = readTable(paneTable, "en");
    for (const char *key : {"Connecting", "Downloading", "Installing", "PrinterComponent", "ScannerComponent",
                            "PressdeckComponent", "PCFAXComponent", "PreviousPage", "NextPage", "PageIndicator",
                            "ComponentTable", "SupportLink", "SupportAddress"})
        EXPECT_TRUE(english.strings.contains(key)) << key;
}

TEST(StringTables, NoTextIsEmptyAndPlaceholdersAreTheSameInEveryLanguage) {
    for (const TableName &each : tables) {
        const Table english = readTable(each, "en");
        for (const char *language : languages) {
            for (const auto &[key, text] : readTable(each, language).strings) {
                EXPECT_FALSE(text.empty()) << language << ": " << key;
                const std::multiset<std::string> found = placeholders(text);
                const std::multiset<std::string> wanted = placeholders(english.strings.at(key));
                // How often a name is repeated is a matter of the language; whether it stands there is not.
                EXPECT_EQ(std::set(found.begin(), found.end()), std::set(wanted.begin(), wanted.end()))
                    << language << ": " << key;
            }
        }
    }
}

// Both platforms take the tables for UTF-8 without doubt only behind the mark.
TEST(StringTables, BeginWithAByteOrderMark) {
    for (const TableName &each : tables)
        for (const char *language : languages)
            EXPECT_TRUE(readTable(each, language).bytes.starts_with(byteOrderMark)) << each.name << ' ' << language;
}

// The status line puts an ellipsis behind these itself.
TEST(StringTables, StatusWordsBringNoEllipsisOfTheirOwn) {
    for (const char *language : languages) {
        const Table table = readTable(paneTable, language);
        for (const char *key : {"Connecting", "Downloading", "Installing", "PrinterComponent", "ScannerComponent"}) {
            const std::string &word = table.strings.at(key);
            EXPECT_FALSE(word.ends_with(".") || word.ends_with("…") || word.ends_with(" ")) << language << ": " << word;
        }
    }
}
