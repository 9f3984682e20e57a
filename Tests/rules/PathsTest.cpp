#include "base/Paths.hpp"

#include <gtest/gtest.h>
#include <string>

namespace {

struct PathCase {
    std::string_view path;
    std::string_view lastComponent;
    std::string_view extension;
    std::string_view withoutExtension;
};

constexpr PathCase pathCases[] = {
    {"", "", "", ""},
    {"/", "/", "", "/"},
    {"//", "/", "", "/"},
    {"a", "a", "", "a"},
    {"a.", "a.", "", "a"},
    {"a./", "a.", "", "a"},
    {"a.pkg", "a.pkg", "pkg", "a"},
    {"a..pkg", "a..pkg", "pkg", "a."},
    {".pkg", ".pkg", "", ".pkg"},
    {"..pkg", "..pkg", "pkg", "."},
    {".a.b", ".a.b", "b", ".a"},
    {"/.pkg", ".pkg", "", "/.pkg"},
    {"/a.b/.c", ".c", "", "/a.b/.c"},
    {"/a.b/c", "c", "", "/a.b/c"},
    {"a/b.", "b.", "", "a/b"},
    {"//a", "a", "", "//a"},
    {"a//b.c", "b.c", "c", "a//b"},
    {"/Volumes/M.1/Printer Driver.pkg", "Printer Driver.pkg", "pkg", "/Volumes/M.1/Printer Driver"},
    {"/tmp/a.pkg/", "a.pkg", "pkg", "/tmp/a"},
    {"/tmp/a.pkg///", "a.pkg", "pkg", "/tmp/a"},
    {"a b.c d", "a b.c d", "c d", "a b"},
    {"http://h.example/x/Fax.zip", "Fax.zip", "zip", "http://h.example/x/Fax"},
    {"/t/\xC3\xA9t\xC3\xA9.\xC3\xA9", "\xC3\xA9t\xC3\xA9.\xC3\xA9", "\xC3\xA9", "/t/\xC3\xA9t\xC3\xA9"},
};

TEST(Paths, LastComponentStandsBehindTheLastSlash) {
    for (const PathCase &row : pathCases)
        EXPECT_EQ(vant::lastPathComponent(row.path), row.lastComponent) << "path: \"" << row.path << '"';
}

TEST(Paths, ExtensionFollowsTheLastFullStopOfTheName) {
    for (const PathCase &row : pathCases)
        EXPECT_EQ(vant::pathExtension(row.path), row.extension) << "path: \"" << row.path << '"';
}

TEST(Paths, DeletingTheExtensionKeepsHiddenNamesWhole) {
    for (const PathCase &row : pathCases)
        EXPECT_EQ(vant::deletingPathExtension(row.path), row.withoutExtension) << "path: \"" << row.path << '"';
}

TEST(Paths, ComponentsMayHoldAnyByte) {
    const std::string path("/a\0b/c\xFF.p\0g", 11);
    EXPECT_EQ(vant::lastPathComponent(path), std::string_view("c\xFF.p\0g", 6));
    EXPECT_EQ(vant::pathExtension(path), std::string_view("p\0g", 3));
}

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
        EXPECT_EQ(vant::destinationName(row.address), row.name) << row.address;
}

} // namespace
