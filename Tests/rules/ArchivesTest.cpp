#include "install/tasks/Archives.hpp"

#include <gtest/gtest.h>
#include <string_view>

namespace vant {
namespace {

TEST(ExtractFolderName, IsTheFileNameWithoutItsExtension) {
    struct Row {
        std::string_view path;
        std::string_view name;
    };
    const Row rows[] = {
        {"/tmp/Vantrel/Download/Fax.zip", "Fax"},
        {"/tmp/a.b/Fax 2.1.cpio.gz", "Fax 2.1.cpio"},
        {"/tmp/a.zip?version=2", "a"},
        {"/tmp/archive", "archive"},
        {"/tmp/.zip", ".zip"},
        {"", ""},
    };
    for (const Row &row : rows)
        EXPECT_EQ(extractFolderName(row.path), row.name) << row.path;
}

TEST(ArchiveKind, IsZipForThatExtensionAloneAndExactly) {
    EXPECT_EQ(archiveKind("/tmp/a.zip"), ArchiveKind::Zip);
    EXPECT_EQ(archiveKind("a.b.zip"), ArchiveKind::Zip);
    for (const std::string_view path :
         {"a.ZIP", "a.Zip", "a.zipx", "a.gz", "a.cpio", "azip", "zip", ".zip", "a.zip.gz", "a.zip?x=1", "a.zip/b", ""})
        EXPECT_EQ(archiveKind(path), ArchiveKind::Cpio) << path;
}

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

} // namespace
} // namespace vant
