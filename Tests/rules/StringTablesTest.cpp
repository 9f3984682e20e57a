#include "StringTables.hpp"

#include <algorithm>
#include <gtest/gtest.h>
#include <regex>
#include <set>

using namespace vant::test;

namespace {

using Keys = std::vector<std::string>;

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// The tables of the pane and of the reference host.
constexpr TableName tables[] = {
    paneTable,
    {VANT_HOST_RESOURCES, "Localizable-Inst"},
    {VANT_HOST_RESOURCES, "Localizable"},
    {VANT_HOST_RESOURCES, "InfoPlist"},
};

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
        const std::vector<std::string> english = readTable(each, "en").keys;
        ASSERT_FALSE(english.empty()) << each.folder << '/' << each.name;
        for (const std::string &language : languageFolders(each.folder)) {
            std::vector<std::string> keys = readTable(each, language).keys;
            std::sort(keys.begin(), keys.end());
            EXPECT_EQ(std::adjacent_find(keys.begin(), keys.end()), keys.end()) << language << " has a key twice";
            EXPECT_EQ(lacking(english, keys), Keys{}) << "missing in " << each.name << ' ' << language;
            EXPECT_EQ(lacking(keys, english), Keys{}) << "only in " << each.name << ' ' << language;
        }
    }
}

TEST(StringTables, HoldTheKeysThatThePaneLooksUp) {
    const StringTable english = readTable(paneTable, "en");
    for (const char *key : {"Connecting", "Downloading", "Installing", "PrinterComponent", "ScannerComponent",
                            "PressdeckComponent", "PCFAXComponent", "PreviousPage", "NextPage", "PageIndicator",
                            "ComponentTable", "SupportLink", "SupportAddress"})
        EXPECT_TRUE(english.strings.contains(key)) << key;
}

TEST(StringTables, NoTextIsEmptyAndPlaceholdersAreTheSameInEveryLanguage) {
    for (const TableName &each : tables) {
        const StringTable english = readTable(each, "en");
        for (const std::string &language : languageFolders(each.folder)) {
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
        for (const std::string &language : languageFolders(each.folder))
            EXPECT_TRUE(readTable(each, language).bytes.starts_with(byteOrderMark)) << each.name << ' ' << language;
}

// The status line puts an ellipsis behind these itself.
TEST(StringTables, StatusWordsBringNoEllipsisOfTheirOwn) {
    for (const std::string &language : languageFolders(paneTable.folder)) {
        const StringTable table = readTable(paneTable, language);
        for (const char *key : {"Connecting", "Downloading", "Installing", "PrinterComponent", "ScannerComponent"}) {
            const std::string &word = table.strings.at(key);
            EXPECT_FALSE(word.ends_with(".") || word.ends_with("…") || word.ends_with(" ")) << language << ": " << word;
        }
    }
}
