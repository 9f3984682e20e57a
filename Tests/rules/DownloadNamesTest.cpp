#include "download/DownloadNames.hpp"

#include <gtest/gtest.h>
#include <string_view>

namespace vant {
namespace {

TEST(DestinationName, IsWhatStandsBehindTheLastSlash) {
    struct Row {
        std::string_view address;
        std::string_view name;
    };
    const Row rows[] = {
        {"http://host/a/Printer%20Driver.zip", "Printer%20Driver.zip"},
        {"http://host/a.zip?version=2&x=y", "a.zip?version=2&x=y"},
        {"http://host/a.zip?path=/b/c", "c"},
        {"http://host/folder/", ""},
        {"http://host", "host"},
        {"a.zip", "a.zip"},
        {"", ""},
        {"/", ""},
        {"http://host/..", ".."},
        {"http://host/Tr\xC3\xA9s.zip#part", "Tr\xC3\xA9s.zip#part"},
        {"http://host/a.zip\\b", "a.zip\\b"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(destinationName(row.address), row.name) << row.address;
}

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

} // namespace
} // namespace vant
