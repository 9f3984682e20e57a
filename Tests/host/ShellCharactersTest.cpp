#include "ShellCharacters.hpp"

#include <gtest/gtest.h>

using vant::host::shellCharacter;
using vant::host::shellCharacterInName;

TEST(HostShellCharacters, NamesWhatAShellReadsInsideDoubleQuotes) {
    struct Row {
        std::string_view location;
        const char *named;
    };
    const Row rows[] = {
        {"http://site/$HOME.zip", "$"},
        {"http://site/a\"b.zip", "\""},
        {"http://site/`ls`.zip", "`"},
        {"http://site/a\\b.zip", "\\"},
        {"http://site/a\nb.zip", "a line feed"},
        {"http://site/%24HOME.zip", "$"},
        {"http://site/a%60b.zip", "`"},
        {"http://site/a%0ab.zip", "a line feed"},
        {"http://site/%0Db", "a carriage return"},
        {"http://site/a%00b.zip", "a null character"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(shellCharacter(row.location), row.named) << row.location;
}

TEST(HostShellCharacters, LeavesEverythingElse) {
    for (const char *location :
         {"", "http://site/a b.zip", "http://site/it's (1) & more; *?~#!.zip", "http://site/Ger%C3%A4t.zip",
          "http://site/100%", "http://site/100%2", "http://site/%zz%2g", "/média/«1»"})
        EXPECT_FALSE(shellCharacter(location)) << location;
}

TEST(HostShellCharacters, AreNotEncodedInAFilesName) {
    EXPECT_EQ(shellCharacterInName("Fax `x`.pkg"), "`");
    EXPECT_EQ(shellCharacterInName("a\nb.zip"), "a line feed");
    EXPECT_EQ(shellCharacterInName("100%24 (it's).icc"), std::nullopt);
    EXPECT_EQ(shellCharacterInName(""), std::nullopt);
}
