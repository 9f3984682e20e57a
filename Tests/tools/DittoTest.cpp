#include "DittoFixture.hpp"

#include <sys/stat.h>

#include <chrono>

namespace fs = std::filesystem;

namespace vant::test {

using samples::file;
using samples::Filter;
using samples::folder;
using samples::Format;
using samples::Item;
using samples::link;
using namespace std::string_literals;

namespace {

mode_t modeOf(const fs::path &path) {
    struct stat info {};
    ::lstat(path.c_str(), &info);
    return info.st_mode & 07777;
}

} // namespace

TEST_F(Ditto, ExpandsFoldersFilesAndLinksOfEveryKindOfArchive) {
    const Tree expected{"Folder",   "Folder/Sub", "Folder/Sub/file = two", "Folder/link -> Sub/file",
                        "empty = ", "file = one"};
    for (const auto &shape : shapes) {
        const auto run =
            expand(shape, {file("file", "one"), folder("Folder"), folder("Folder/Sub"), file("Folder/Sub/file", "two"),
                           link("Folder/link", "Sub/file"), file("empty", "")});
        EXPECT_EQ(run.status, 0) << shape.name << run.errors;
        EXPECT_EQ(run.output + run.errors, "") << shape.name;
        EXPECT_EQ(treeOf(out()), expected) << shape.name;
        fs::remove_all(out());
    }
}

TEST_F(Ditto, MakesFoldersThatTheArchiveDoesNotList) {
    for (const auto &shape : shapes) {
        EXPECT_EQ(expand(shape, {file("a/b/c", "deep")}).status, 0) << shape.name;
        EXPECT_EQ(treeOf(out()), (Tree{"a", "a/b", "a/b/c = deep"})) << shape.name;
        fs::remove_all(out());
    }
}

TEST_F(Ditto, KeepsModesAndTimesAndDropsSetIdBitsAndOthersLeaveToWrite) {
    for (const auto &shape : shapes) {
        ASSERT_EQ(expand(shape, {folder("closed", 0555), file("closed/program", "#!", 06751), file("shared", "x", 0666),
                                 folder("open", 0777)})
                      .status,
                  0)
            << shape.name;
        EXPECT_EQ(modeOf(out() / "closed"), 0555U) << shape.name;
        EXPECT_EQ(modeOf(out() / "closed/program"), 0751U) << shape.name;
        EXPECT_EQ(modeOf(out() / "shared"), 0644U) << shape.name;
        EXPECT_EQ(modeOf(out() / "open"), 0755U) << shape.name;
        EXPECT_EQ(modeOf(out()), 0755U) << shape.name;
        EXPECT_EQ(modeOf(out().parent_path()), 0755U) << shape.name;
        struct stat info {};
        ::stat((out() / "closed/program").c_str(), &info);
        EXPECT_EQ(info.st_mtim.tv_sec, samples::itemTime) << shape.name;
        ::stat((out() / "closed").c_str(), &info);
        EXPECT_EQ(info.st_mtim.tv_sec, samples::itemTime) << shape.name;
        fs::permissions(out() / "closed", fs::perms::owner_all);
        fs::remove_all(out());
    }
}

TEST_F(Ditto, KeepsNamesWithBlanksAndAccentsWhateverTheLanguage) {
    for (const auto &shape : shapes) {
        ASSERT_EQ(expand(shape, {file("Ünï cödé/プリンタ $`\"x.txt", "x")}).status, 0) << shape.name;
        EXPECT_EQ(treeOf(out()), (Tree{"Ünï cödé", "Ünï cödé/プリンタ $`\"x.txt = x"})) << shape.name;
        fs::remove_all(out());
    }
}

TEST_F(Ditto, MergesIntoAFolderAndReplacesFilesAndLinks) {
    for (const auto &shape : shapes) {
        writeFile(out() / "d/kept", "kept");
        writeFile(out() / "d/file", "old and longer");
        writeFile(jail_.path("outside"), "untouched");
        fs::create_symlink(jail_.path("outside"), out() / "d/link");
        fs::create_symlink("nowhere", out() / "d/other");
        const auto run =
            expand(shape, {folder("d"), file("d/file", "new"), file("d/link", "no link now"), link("d/other", "file")});
        EXPECT_EQ(run.status, 0) << shape.name << run.errors;
        EXPECT_EQ(treeOf(out()),
                  (Tree{"d", "d/file = new", "d/kept = kept", "d/link = no link now", "d/other -> file"}))
            << shape.name;
        EXPECT_EQ(contentsOf(jail_.path("outside")), "untouched") << shape.name;
        fs::remove_all(out());
    }
}

TEST_F(Ditto, ReplacesOneNameOfAFileAndLeavesItsOtherName) {
    writeFile(jail_.path("outside"), "untouched");
    fs::create_directories(out());
    fs::create_hard_link(jail_.path("outside"), out() / "file");
    EXPECT_EQ(expand(shapes[0], {file("file", "new")}).status, 0);
    EXPECT_EQ(contentsOf(out() / "file"), "new");
    EXPECT_EQ(contentsOf(jail_.path("outside")), "untouched");
}

TEST_F(Ditto, LeavesAFolderThatIsInTheWayOfAFile) {
    writeFile(out() / "name/precious", "kept");
    const auto run = expand(shapes[0], {file("name", "file")});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.errors.find("name: a folder is in the way"), std::string::npos) << run.errors;
    EXPECT_EQ(treeOf(out()), (Tree{"name", "name/precious = kept"}));
}

TEST_F(Ditto, FollowsALinkThatIsTheDestinationItself) {
    fs::create_directories(jail_.path("real"));
    fs::create_directories(out().parent_path());
    fs::create_directory_symlink(jail_.path("real"), out());
    EXPECT_EQ(expand(shapes[0], {file("a", "1")}).status, 0);
    EXPECT_EQ(contentsOf(jail_.path("real/a")), "1");
}

TEST_F(Ditto, LeavesOutTheAttributesThatAMacKeepsBesideAFile) {
    const auto attributes = "\x00\x05\x16\x07 attributes"s;
    for (const auto &shape : shapes) {
        ASSERT_EQ(expand(shape, {file("X.pkg", "package"), file("._X.pkg", attributes), file("._plain", "text"),
                                 file("__MACOSX/._X.pkg", attributes), folder("__MACOSX")})
                      .status,
                  0)
            << shape.name;
        EXPECT_EQ(treeOf(out()), (Tree{"._plain = text", "X.pkg = package"})) << shape.name;
        fs::remove_all(out());
    }
}

TEST_F(Ditto, NamesOfOneFileStayOneFileWhereverTheDataComes) {
    const auto name = [](const char *path, const char *content) {
        auto item = file(path, content);
        item.inode = 7;
        return item;
    };
    const std::vector<std::vector<Item>> orders{
        {name("a", "data"), name("b", "data"), name("c", "data")},
        {name("a", ""), name("b", ""), name("c", "data")},
        {name("a", ""), name("b", "data"), name("c", "")},
    };
    for (const auto &items : orders) {
        const auto run = expand({"", Format::NewCpio, Filter::None, "-x"}, items);
        ASSERT_EQ(run.status, 0) << run.errors;
        EXPECT_EQ(treeOf(out()), (Tree{"a = data", "b = data", "c = data"}));
        EXPECT_EQ(fs::hard_link_count(out() / "a"), 3U);
        fs::remove_all(out());
    }
}

TEST_F(Ditto, AnswersAWrongCommandLineWithItsUsage) {
    const std::vector<std::vector<std::string>> lines{{},
                                                      {"-x"},
                                                      {"-xk", "a"},
                                                      {"-k", "a", "b"},
                                                      {"a", "b"},
                                                      {"-xz", "a", "b"},
                                                      {"-xk", "a", "b", "c"},
                                                      {"-x", "a", ""}};
    for (const auto &line : lines) {
        const auto run = runTool(dittoTool(), line);
        EXPECT_EQ(run.status, 1) << line.size();
        EXPECT_EQ(run.errors.rfind("usage: ditto", 0), 0U) << run.errors;
    }
}

TEST_F(Ditto, TakesItsOptionsApartToo) {
    archive(shapes[0], {file("a", "1")});
    EXPECT_EQ(runTool(dittoTool(), {"-x", "-k", jail_.path("archive"), out()}).status, 0);
    EXPECT_EQ(contentsOf(out() / "a"), "1");
}

TEST_F(Ditto, FailsOnWhatIsNoArchiveAndLeavesNoDestination) {
    for (const auto *option : {"-x", "-xk"}) {
        for (const auto &content : {""s, "x"s, std::string(5000, '\0'), "<html>Please sign in</html>"s}) {
            writeFile(jail_.path("archive"), content);
            const auto run = ditto(option);
            EXPECT_EQ(run.status, 1) << option << content;
            EXPECT_EQ(run.errors.rfind("ditto: ", 0), 0U) << run.errors;
            EXPECT_FALSE(fs::exists(out())) << option << content;
        }
    }
}

TEST_F(Ditto, FailsOnTheOtherKindOfArchive) {
    archive(shapes[0], {file("a", "1")});
    EXPECT_EQ(ditto("-x").status, 1);
    archive(shapes[2], {file("a", "1")});
    EXPECT_EQ(ditto("-xk").status, 1);
    EXPECT_FALSE(fs::exists(out()));
}

TEST_F(Ditto, FailsOnAnArchiveWithoutEntries) {
    for (const auto &shape : shapes) {
        EXPECT_EQ(expand(shape, {}).status, 1) << shape.name;
        EXPECT_FALSE(fs::exists(out())) << shape.name;
    }
}

TEST_F(Ditto, FailsOnAMissingArchiveAFolderAndAPipe) {
    for (const auto *option : {"-x", "-xk"}) {
        EXPECT_EQ(ditto(option).status, 1) << "missing";
        fs::create_directory(jail_.path("archive"));
        EXPECT_EQ(ditto(option).status, 1) << "folder";
        fs::remove(jail_.path("archive"));
        ASSERT_EQ(::mkfifo(jail_.path("archive").c_str(), 0600), 0);
        EXPECT_EQ(ditto(option).status, 1) << "pipe: a wait for its other end would last for ever";
        fs::remove(jail_.path("archive"));
    }
    EXPECT_FALSE(fs::exists(out().parent_path()));
}

TEST_F(Ditto, FailsWhenTheDestinationCannotBeAFolder) {
    for (const auto &shape : shapes) {
        writeFile(out(), "a file");
        EXPECT_EQ(expand(shape, {file("a", "1")}).status, 1) << shape.name;
        EXPECT_EQ(contentsOf(out()), "a file") << shape.name;
    }
}

TEST_F(Ditto, WhatTheVolumeHasNoRoomForIsRefusedAndNothingIsLeft) {
    const SmallDisk disk(jail_.path("some"), "256k");
    if (!disk.mounted())
        GTEST_SKIP() << "needs the right to mount a small file system";
    for (const auto &shape : shapes) {
        const auto run = expand(shape, {file("small", "x"), file("large", std::string(1 << 20, 'x'))});
        EXPECT_EQ(run.status, 1) << shape.name;
        EXPECT_NE(run.errors.find("refused, needs 104857"), std::string::npos) << run.errors;
        EXPECT_TRUE(treeOf(out().parent_path()).empty()) << shape.name;
    }
}

} // namespace vant::test
