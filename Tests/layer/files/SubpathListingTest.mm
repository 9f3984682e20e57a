#import <Foundation/Foundation.h>

#include "Jail.hpp"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

using vant::test::Jail;
using vant::test::writeFile;
using Paths = std::vector<std::string>;

Paths utf8(id<NSFastEnumeration> items) {
    Paths paths;
    for (NSString *item in items)
        paths.emplace_back([item UTF8String]);
    return paths;
}

NSString *text(const fs::path &path) {
    return [NSString stringWithUTF8String:path.c_str()];
}

Paths listed(const fs::path &folder) {
    return utf8([[NSFileManager defaultManager] subpathsAtPath:text(folder)]);
}

/// What GNUstep lists below a folder: its enumerator is what its own listing is made of.
Paths enumerated(const fs::path &folder) {
    return utf8([[[NSFileManager defaultManager] enumeratorAtPath:text(folder)] allObjects]);
}

bool holds(const Paths &paths, const std::string &path) {
    return std::ranges::find(paths, path) != paths.end();
}

// clang-format off
const std::string oddNames[] = {"a b",     ".hidden", "..twice", "~",         "~root",    
                                "line\n2", "é",       "e\u0301", "end.",      "100%@",    "-n", "'\"$`",
                                "トナー",  "...",     ".pkg",    "{x,y}*[?]", "Fax.pkg~"};
// clang-format on

TEST(SubpathListing, OddNamesAreListedAsGNUstepListsThem) {
    for (const std::string &name : oddNames) {
        const Jail jail;
        writeFile(jail.path("top") / name / name / "file", "");
        const Paths paths = listed(jail.path("top"));
        EXPECT_EQ(paths, (Paths{name, name + "/" + name, name + "/" + name + "/file"})) << name;
        EXPECT_EQ(paths, enumerated(jail.path("top"))) << name;
    }
}

// GNUstep's enumerator reads such names as paths of another system, and loses what they hold or strays from the folder.
TEST(SubpathListing, ADriveOrABackslashBelongsToTheName) {
    for (const std::string name : {"C:", "a:b", "back\\slash", "\\"}) {
        const Jail jail;
        writeFile(jail.path("top") / name / name / "file", "");
        EXPECT_EQ(listed(jail.path("top")), (Paths{name, name + "/" + name, name + "/" + name + "/file"})) << name;
    }
}

TEST(SubpathListing, AFolderComesRightBeforeWhatItHoldsAtEveryDepth) {
    const Jail jail;
    for (int i = 0; i < 40; ++i)
        for (int j = 0; j < 12; ++j)
            writeFile(jail.path("top") / std::to_string(i) / "Some.pkg/Contents" / std::to_string(j), "");
    const Paths paths = listed(jail.path("top"));
    ASSERT_EQ(paths.size(), 40U * (3 + 12));
    EXPECT_EQ(paths, enumerated(jail.path("top")));
    for (std::size_t i = 0; i < paths.size(); i += 15) {
        EXPECT_EQ(paths[i].find('/'), std::string::npos) << paths[i];
        EXPECT_EQ(paths[i + 1], paths[i] + "/Some.pkg");
    }
}

TEST(SubpathListing, LinksAreListedAndNotFollowed) {
    const Jail jail;
    writeFile(jail.path("elsewhere/file"), "");
    fs::create_directories(jail.path("top/inside"));
    fs::create_directory_symlink(jail.path("elsewhere"), jail.path("top/away"));
    fs::create_directory_symlink("..", jail.path("top/inside/loop"));
    fs::create_symlink("missing", jail.path("top/dangling"));
    Paths paths = listed(jail.path("top"));
    EXPECT_EQ(paths, enumerated(jail.path("top")));
    std::ranges::sort(paths);
    EXPECT_EQ(paths, (Paths{"away", "dangling", "inside", "inside/loop"}));
}

TEST(SubpathListing, ALinkToAFolderIsListedAsTheFolder) {
    const Jail jail;
    writeFile(jail.path("elsewhere/file"), "");
    fs::create_directory_symlink(jail.path("elsewhere"), jail.path("top"));
    EXPECT_EQ(listed(jail.path("top")), Paths{"file"});
    EXPECT_EQ(listed(jail.path("top/")), Paths{"file"});
}

TEST(SubpathListing, OtherKindsOfFileAreListed) {
    const Jail jail;
    fs::create_directories(jail.path("top/empty"));
    ASSERT_EQ(mkfifo(jail.path("top/pipe").c_str(), 0600), 0);
    Paths paths = listed(jail.path("top"));
    EXPECT_EQ(paths, enumerated(jail.path("top")));
    std::ranges::sort(paths);
    EXPECT_EQ(paths, (Paths{"empty", "pipe"}));
}

/// Gives up the superuser's rights, for which no folder is closed, for a scope. The folder is made nobody's.
class Nobody {
public:
    explicit Nobody(const fs::path &folder) {
        if (geteuid() == 0 && chown(folder.c_str(), nobody, nobody) == 0)
            EXPECT_EQ(seteuid(nobody), 0);
    }
    ~Nobody() { EXPECT_EQ(seteuid(getuid()), 0); }
    Nobody(const Nobody &) = delete;
    Nobody &operator=(const Nobody &) = delete;

private:
    static constexpr uid_t nobody = 65534;
};

TEST(SubpathListing, AnUnreadableFolderIsListedWithoutContents) {
    const Jail jail;
    writeFile(jail.path("top/closed/file"), "");
    fs::permissions(jail.path("top/closed"), fs::perms::none);
    const Nobody nobody(jail.root());
    EXPECT_EQ(listed(jail.path("top")), Paths{"closed"});
    EXPECT_EQ(enumerated(jail.path("top")), Paths{"closed"});
}

TEST(SubpathListing, AFolderThatIsItselfUnreadableHasAnEmptyListing) {
    const Jail jail;
    writeFile(jail.path("top/file"), "");
    fs::permissions(jail.path("top"), fs::perms::none);
    const Nobody nobody(jail.root());
    NSArray *items = [[NSFileManager defaultManager] subpathsAtPath:text(jail.path("top"))];
    ASSERT_NE(items, nil);
    EXPECT_EQ([items count], 0U);
}

TEST(SubpathListing, WhatLiesDeeperThanAPathCanSayIsLeftOut) {
    const Jail jail;
    const std::string name(250, 'd');
    fs::create_directories(jail.path("top"));
    const fs::path before = fs::current_path();
    fs::current_path(jail.path("top"));
    for (int depth = 0; depth < 20; ++depth) {
        fs::create_directory(name);
        fs::current_path(name);
    }
    fs::current_path(before);
    const Paths paths = listed(jail.path("top"));
    EXPECT_GT(paths.size(), 14U);
    EXPECT_LT(paths.size(), 20U);
    EXPECT_EQ(paths, enumerated(jail.path("top")));
    EXPECT_EQ(std::system(("rm -rf '" + jail.path("top").string() + "'").c_str()), 0);
}

TEST(SubpathListing, ANameThatIsNoTextIsLeftOutWithAllItHolds) {
    const Jail jail;
    writeFile(jail.path("top/bad\xff\xfe name/file"), "");
    writeFile(jail.path("top/good/file"), "");
    const Paths paths = listed(jail.path("top"));
    EXPECT_EQ(paths, enumerated(jail.path("top")));
    EXPECT_TRUE(holds(paths, "good/file"));
}

TEST(SubpathListing, WhatIsNoFolderHasNoListing) {
    const Jail jail;
    NSFileManager *files = [NSFileManager defaultManager];
    EXPECT_EQ([files subpathsAtPath:text(writeFile(jail.path("file"), ""))], nil);
    EXPECT_EQ([files subpathsAtPath:text(jail.path("missing"))], nil);
    EXPECT_EQ([files subpathsAtPath:@""], nil);
    EXPECT_EQ([files subpathsAtPath:nil], nil);
}

TEST(SubpathListing, AnEmptyFolderHasAnEmptyListing) {
    const Jail jail;
    fs::create_directories(jail.path("top"));
    NSArray *items = [[NSFileManager defaultManager] subpathsAtPath:text(jail.path("top"))];
    ASSERT_NE(items, nil);
    EXPECT_EQ([items count], 0U);
}

TEST(SubpathListing, TheFoldersAreClosedAgain) {
    const Jail jail;
    for (int i = 0; i < 20; ++i)
        writeFile(jail.path("top") / std::to_string(i) / "deeper/file", "");
    const auto open = [] { return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()); };
    const auto before = open();
    EXPECT_EQ(listed(jail.path("top")).size(), 60U);
    EXPECT_EQ(open(), before);
}

} // namespace
