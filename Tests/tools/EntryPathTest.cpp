#include "GNUstep/tools/tree/EntryPath.hpp"

#include <gtest/gtest.h>

using namespace std::string_literals;

namespace vant::tools {

TEST(EntryPath, DropsWhatChangesNothing) {
    const auto path = safeEntryPath("./a//b/./c");
    ASSERT_TRUE(path);
    EXPECT_EQ(path->text(), "a/b/c");
    EXPECT_EQ(path->folders.size(), 2U);
    EXPECT_EQ(path->name, "c");
}

TEST(EntryPath, TheDestinationItselfHasNoName) {
    for (const auto *text : {".", "./", "././"}) {
        const auto path = safeEntryPath(text);
        ASSERT_TRUE(path) << text;
        EXPECT_EQ(path->text(), "") << text;
    }
}

TEST(EntryPath, ATrailingSlashNamesTheFolder) {
    EXPECT_EQ(safeEntryPath("a/b/")->name, "b");
}

TEST(EntryPath, RefusesWhateverCouldLeaveTheDestination) {
    for (const auto &text : {""s, "/"s, "/etc/x"s, ".."s, "../x"s, "a/../b"s, "a/.."s, "a/b/../../../x"s, "a\0b"s})
        EXPECT_FALSE(safeEntryPath(text)) << text;
}

TEST(EntryPath, NamesThatOnlyLookLikeTheFolderAboveAreNames) {
    for (const auto *text : {"...", "..a", "a..", "a/..b/c", "\\..\\x"})
        EXPECT_TRUE(safeEntryPath(text)) << text;
}

TEST(EntryPath, RefusesAPathTooDeepToBeMeant) {
    std::string deep;
    for (int i = 0; i < 200; ++i)
        deep += "d/";
    EXPECT_TRUE(safeEntryPath(deep));
    EXPECT_FALSE(safeEntryPath(deep + "d"));
}

TEST(MacMetadata, LiesBelowOneFolderAtTheTop) {
    EXPECT_TRUE(isMacMetadata(*safeEntryPath("__MACOSX")));
    EXPECT_TRUE(isMacMetadata(*safeEntryPath("__MACOSX/a/._b")));
    EXPECT_FALSE(isMacMetadata(*safeEntryPath("a/__MACOSX/b")));
    EXPECT_FALSE(isMacMetadata(*safeEntryPath("__MACOSX2/b")));
}

TEST(MacMetadata, AnAppleDoubleHasBothItsNameAndItsMagic) {
    const auto magic = "\x00\x05\x16\x07rest"s;
    EXPECT_TRUE(isAppleDouble("._a", magic));
    EXPECT_FALSE(isAppleDouble("a", magic));
    EXPECT_FALSE(isAppleDouble("._a", "plain text"));
    EXPECT_FALSE(isAppleDouble("._a", magic.substr(0, 3)));
}

} // namespace vant::tools
