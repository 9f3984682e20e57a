#include "install/tasks/DittoCommand.hpp"

#include <gtest/gtest.h>

using vant::ArchiveKind;
using vant::dittoCommand;

TEST(DittoCommand, ZipArchivesAreExpandedAsZip) {
    EXPECT_EQ(dittoCommand(ArchiveKind::Zip, "/a.zip", "/out"), R"(ditto -xk "/a.zip" "/out")");
}

TEST(DittoCommand, OtherArchivesAreExpandedAsCpio) {
    EXPECT_EQ(dittoCommand(ArchiveKind::Cpio, "/a.gz", "/out"), R"(ditto -x "/a.gz" "/out")");
}

TEST(DittoCommand, PathsStandUnchangedBetweenDoubleQuotes) {
    struct Case {
        const char *path;
    };
    for (const Case &row : {Case{"/with a blank"}, Case{"/\"quoted\""}, Case{"/$HOME"}, Case{"/`id`"},
                            Case{"/back\\slash"}, Case{"/line\nfeed"}, Case{"/\xC3\xA9t\xC3\xA9"}, Case{""}}) {
        const std::string quoted = "\"" + std::string(row.path) + "\"";
        EXPECT_EQ(dittoCommand(ArchiveKind::Zip, row.path, "/out"), "ditto -xk " + quoted + " \"/out\"") << row.path;
        EXPECT_EQ(dittoCommand(ArchiveKind::Cpio, "/a", row.path), "ditto -x \"/a\" " + quoted) << row.path;
    }
}
