#import <Foundation/Foundation.h>

#include "Jail.hpp"

#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <string>

namespace fs = std::filesystem;
using vant::test::writeFile;

namespace {

class Folders : public testing::Test {
protected:
    ~Folders() override { [pool release]; }

    [[nodiscard]] NSString *path(const std::string &name) const {
        return [NSString stringWithUTF8String:jail.path(name).c_str()];
    }
    BOOL create(const std::string &name, BOOL withParents, NSError **error = nullptr) const {
        return [files createDirectoryAtPath:path(name)
                withIntermediateDirectories:withParents
                                 attributes:nil
                                      error:error];
    }

    NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
    NSFileManager *files = [NSFileManager defaultManager];
    vant::test::Jail jail;
};

TEST_F(Folders, CannotBeCreatedWhereAFileStands) {
    writeFile(jail.path("file"), "kept");
    for (const BOOL withParents : {YES, NO}) {
        NSError *error = nil;
        EXPECT_FALSE(create("file", withParents, &error));
        EXPECT_NE(error, nil);
    }
    NSError *error = nil;
    EXPECT_FALSE(create("file", YES, &error));
    EXPECT_TRUE([[error domain] isEqual:NSCocoaErrorDomain]);
    EXPECT_EQ([error code], 516);
    EXPECT_FALSE(create("file", YES)) << "without a place for the error";
    EXPECT_EQ(vant::test::contentsOf(jail.path("file")), "kept");
}

TEST_F(Folders, CannotBeCreatedBelowAFile) {
    writeFile(jail.path("file"), "kept");
    EXPECT_FALSE(create("file/folder", YES));
}

TEST_F(Folders, AreCreatedWithTheirParents) {
    EXPECT_TRUE(create("a/b/c", YES));
    EXPECT_TRUE(fs::is_directory(jail.path("a/b/c")));
    EXPECT_TRUE(create("a/b/c", YES)) << "a second time";
    EXPECT_FALSE(create("x/y", NO));
}

TEST_F(Folders, MayBeReachedByALink) {
    fs::create_directory(jail.path("folder"));
    fs::create_directory_symlink(jail.path("folder"), jail.path("link"));
    EXPECT_TRUE(create("link", YES));
    fs::create_symlink(jail.path("nowhere"), jail.path("dangling"));
    EXPECT_FALSE(create("dangling", YES));
}

TEST_F(Folders, AreEnumeratedWhateverTheirNames) {
    const std::set<std::string> items = {"C:",  "C:/f",  "a:b",     "a:b/f", "x\\y",  "x\\y/f", "~",
                                         "~/f", "~root", "~root/f", "..z",   "..z/f", "c:file", "back\\slash"};
    for (const auto &item : items)
        if (item.ends_with("/f") || item == "c:file" || item == "back\\slash")
            writeFile(jail.path("tree/" + item), "x");
    std::set<std::string> found;
    for (NSString *item in [files enumeratorAtPath:path("tree")]) {
        found.insert([item UTF8String]);
        EXPECT_TRUE([files fileExistsAtPath:[path("tree") stringByAppendingPathComponent:item]]) << [item UTF8String];
        ASSERT_LE(found.size(), items.size());
    }
    EXPECT_EQ(found, items);
}

TEST_F(Folders, AreListedWhateverTheNamesInThem) {
    const std::set<std::string> items = {"C:", "a:b", "x\\y", "~", "~root"};
    for (const auto &item : items)
        writeFile(jail.path("tree/" + item), "x");
    std::set<std::string> found;
    for (NSString *item in [files contentsOfDirectoryAtPath:path("tree") error:nullptr])
        found.insert([item UTF8String]);
    EXPECT_EQ(found, items);
}

TEST(Paths, OnlyTheSlashSeparates) {
    EXPECT_TRUE([[@"/a" stringByAppendingPathComponent:@"C:"] isEqual:@"/a/C:"]);
    EXPECT_TRUE([[@"/a/x\\y" lastPathComponent] isEqual:@"x\\y"]);
    EXPECT_TRUE([[@"/a/x\\y" stringByDeletingLastPathComponent] isEqual:@"/a"]);
    EXPECT_FALSE([@"C:/a" isAbsolutePath]);
    EXPECT_TRUE([@"/a" isAbsolutePath]);
}

} // namespace
