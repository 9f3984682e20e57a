#import "install/profiles/VantInstallation+ICCProfiles.h"

#import "InstallTest.h"
#include "Jail.hpp"

#include <cstdlib>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

using namespace vant::test;
namespace fs = std::filesystem;

class ICCProfiles : public InstallTest {
protected:
    ICCProfiles() {
        // The clean-up removes names below the current folder, so that must be one with nothing to lose.
        fs::create_directories(current);
        fs::current_path(current);
    }

    void installFor(NSString *package) { [pane installICCProfilesIfRequired:package]; }

    /// Packs files that are given as name and content into a zip archive.
    void makeZip(const fs::path &archive, const std::vector<std::pair<std::string, std::string>> &files) {
        const fs::path folder = scratch / "zip";
        fs::remove_all(folder);
        for (const auto &[name, content] : files)
            writeFile(folder / name, content);
        fs::create_directories(archive.parent_path());
        const std::string command =
            "cd '" + folder.string() + "' && bsdtar --format zip -cf '" + archive.string() + "' *";
        ASSERT_EQ(std::system(command.c_str()), 0);
    }

    /// Relative paths of everything below a folder.
    static std::set<std::string> items(const fs::path &folder) {
        std::set<std::string> found;
        std::error_code error;
        for (const auto &entry : fs::recursive_directory_iterator(folder, error))
            found.insert(fs::relative(entry.path(), folder).string());
        return found;
    }

    std::set<std::string> installed() { return items(target); }
    using Names = std::set<std::string>;

    const fs::path source = media() / "MAC_Installer/InstallFiles/Profiles";
    const fs::path second = media() / "MAC_Installer/MAC_Data/Profiles";
    const fs::path staging = temporary("Vantrel/Profiles");
    const fs::path target = home() / "Library/Preferences/Kelscan/Quorvel Universal Scan Driver/Profiles";
    const fs::path current = jail() / "current";
};

TEST_F(ICCProfiles, PackagesThatNeedNoneInstallNone) {
    writeFile(source / "a.icc", "a");
    for (NSString *package in @[ @"Printer Driver.pkg", @"Fax.pkg", @"", @"Uninstaller.pkg" ])
        installFor(package);
    installFor(nil);
    EXPECT_FALSE(fs::exists(target));
    EXPECT_EQ(trace(), "");
}

TEST_F(ICCProfiles, EachPackageOfTheScanFamilyInstallsThem) {
    writeFile(source / "a.icc", "profile a");
    for (NSString *package in
         @[ @"Scan Manager.pkg", @"Hueforge.pkg", @"Scanmate.pkg", @"Scanwick.pkg", @"The DOCUVANE.pkg" ]) {
        fs::remove_all(target);
        installFor(package);
        EXPECT_EQ(contentsOf(target / "a.icc"), "profile a") << text(package);
    }
}

TEST_F(ICCProfiles, InstallFilesAloneAreUsedWhenTheMediaHasBoth) {
    writeFile(source / "first.icc", "1");
    writeFile(second / "second.icc", "2");
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(installed(), Names{"first.icc"});
}

TEST_F(ICCProfiles, InstallFilesWithoutProfilesHideMacData) {
    fs::create_directories(source.parent_path());
    writeFile(second / "second.icc", "2");
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(installed(), Names{});
    EXPECT_TRUE(fs::is_directory(target));
    EXPECT_FALSE(fs::exists(staging));
}

TEST_F(ICCProfiles, MacDataIsUsedWhenInstallFilesIsNoFolder) {
    writeFile(source.parent_path(), "a file");
    writeFile(second / "second.icc", "2");
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(installed(), Names{"second.icc"});
}

TEST_F(ICCProfiles, MediaWithoutEitherFolderFailsToCopyWhatLiesBesideTheHost) {
    writeFile(media() / "stray.icc", "x");
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(installed(), Names{});
    EXPECT_GE(tracedCount("ERROR!!! copying icc profiles file [stray.icc] Failed with error ["), 1);
    EXPECT_EQ(contentsOf(media() / "stray.icc"), "x");
}

TEST_F(ICCProfiles, OnlyExactExtensionsCount) {
    for (const char *name : {"a.icc", "b.ICC", "c.Icc", "d.icm", "e", "f.icc.txt", ".icc"})
        writeFile(source / name, name);
    writeFile(source / "deeper/g.icc", "g");
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(installed(), Names{"a.icc"});
    EXPECT_EQ(tracedCount("ICC FILE===>: a.icc"), 1);
    EXPECT_EQ(tracedCount("ICC FILE===>: "), 1);
}

TEST_F(ICCProfiles, AnExistingProfileKeepsItsContent) {
    writeFile(target / "a.icc", "old");
    writeFile(source / "a.icc", "new");
    writeFile(source / "b.icc", "b");
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(contentsOf(target / "a.icc"), "old");
    EXPECT_EQ(contentsOf(target / "b.icc"), "b");
    EXPECT_EQ(tracedCount("Copy from ["), 1);
    EXPECT_EQ(tracedCount("Copy from [" + staging.string() + "/b.icc] To [" + target.string() + "//b.icc]"), 1)
        << trace();
}

TEST_F(ICCProfiles, ASecondRunCopiesNothingAndTracesNoCopy) {
    writeFile(source / "a.icc", "a");
    installFor(@"Scan Manager.pkg");
    EXPECT_EQ(tracedCount("Copy from ["), 1);
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(tracedCount("Copy from ["), 1);
    EXPECT_EQ(tracedCount("ICC FILE===>: a.icc"), 2);
    EXPECT_EQ(tracedCount("ERROR"), 0);
}

TEST_F(ICCProfiles, ProfilesOfAnArchivesSubfolderLandInTheFolderItself) {
    makeZip(source / "more.zip", {{"x.icc", "x"}, {"sub/deep/y.icc", "y"}, {"sub/readme.txt", "no"}});
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(installed(), (Names{"x.icc", "y.icc"}));
    EXPECT_EQ(contentsOf(target / "y.icc"), "y");
    EXPECT_FALSE(fs::exists(staging));
}

TEST_F(ICCProfiles, ASubfoldersProfileDoesNotReplaceOneOfItsName) {
    writeFile(target / "y.icc", "old");
    makeZip(source / "more.zip", {{"sub/y.icc", "new"}});
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(contentsOf(target / "y.icc"), "old");
    EXPECT_EQ(tracedCount("Copy from ["), 1);
    EXPECT_EQ(tracedCount("ERROR!!! Copy to Kelscan failed"), 1);
}

TEST_F(ICCProfiles, OneFailedCopyIsTracedForEveryLaterProfile) {
    fs::create_directories(target);
    makeZip(source / "more.zip",
            {{"s/a.icc", "1"}, {"t/a.icc", "2"}, {"u/b.icc", "3"}, {"v/c.icc", "4"}, {"w/d.txt", ""}});
    writeFile(target / "a.icc", "old");
    writeFile(target / "b.icc", "old");
    writeFile(target / "c.icc", "old");
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(tracedCount("ERROR!!! Copy to Kelscan failed"), 4);
}

TEST_F(ICCProfiles, AFailedCopyIsTracedForLaterProfilesThatAreCopied) {
    for (const std::string name : {"a", "b", "c", "d"})
        writeFile(staging / name / (name + ".icc"), name);
    NSString *first = nil;
    for (NSString *path in [[NSFileManager defaultManager] enumeratorAtPath:ns(staging)])
        if (first == nil && [[path pathExtension] isEqualToString:@"icc"])
            first = path;
    writeFile(target / text([first lastPathComponent]), "old");
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(installed().size(), 4U);
    EXPECT_EQ(tracedCount("ERROR!!! Copy to Kelscan failed"), 4);
}

TEST_F(ICCProfiles, OnlyTheArchiveListedLastIsExpanded) {
    makeZip(source / "one.zip", {{"one.icc", "1"}});
    makeZip(source / "two.zip", {{"two.icc", "2"}});
    NSString *last = nil;
    for (NSString *name in [[NSFileManager defaultManager] contentsOfDirectoryAtPath:ns(source) error:nullptr])
        last = name;
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(installed(), Names{text([last stringByDeletingPathExtension]) + ".icc"});
    EXPECT_EQ(tracedCount("ICC FILE===>: one.zip"), 1);
    EXPECT_EQ(tracedCount("ICC FILE===>: two.zip"), 1);
}

TEST_F(ICCProfiles, AStagingErrorIsTracedForEveryLaterEntryWhateverItsExtension) {
    // The staging folder holds the first name already, as a folder, so that its copy fails.
    const std::vector<std::string> names{"a.icc", "b.icc", "c.txt", "d.icc"};
    for (const std::string &name : names)
        writeFile(source / name, name);
    NSArray *listed = [[NSFileManager defaultManager] contentsOfDirectoryAtPath:ns(source) error:nullptr];
    std::size_t later = 0;
    bool failed = false;
    std::string first;
    for (NSString *name in listed) {
        if (!failed && [[name pathExtension] isEqualToString:@"icc"]) {
            failed = true;
            first = text(name);
        }
        later += failed ? 1 : 0;
    }
    fs::create_directories(staging / first);
    NSError *error = nil;
    ASSERT_FALSE([[NSFileManager defaultManager] copyItemAtPath:ns(source / first)
                                                         toPath:ns(staging / first)
                                                          error:&error]);
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(static_cast<std::size_t>(tracedCount("ERROR!!! copying icc profiles file [")), later);
    const std::string reason = text([error localizedDescription]);
    EXPECT_NE(reason, "");
    EXPECT_EQ(static_cast<std::size_t>(tracedCount("] Failed with error [" + reason + "]")), later);
    EXPECT_EQ(tracedCount("ERROR!!! copying icc profiles file [" + first + "] Failed with error ["), 1);
    EXPECT_EQ(tracedCount("Failed with error [(null)]"), 0);
}

TEST_F(ICCProfiles, AMissingSourceStillMakesTheTargetAndClearsTheStaging) {
    fs::create_directories(source.parent_path());
    installFor(@"Scanmate.pkg");
    EXPECT_TRUE(fs::is_directory(target));
    EXPECT_FALSE(fs::exists(staging));
    EXPECT_EQ(tracedCount("ICC Alert:No files in Vantrel/Profiles"), 0);
}

TEST_F(ICCProfiles, ASourceThatIsAFileInstallsNothing) {
    writeFile(source, "no folder");
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(installed(), Names{});
    EXPECT_EQ(contentsOf(source), "no folder");
    EXPECT_FALSE(fs::exists(staging));
}

TEST_F(ICCProfiles, AnUnreadableSourceInstallsNothing) {
    if (geteuid() == 0)
        GTEST_SKIP() << "the superuser reads every folder";
    writeFile(source / "a.icc", "a");
    fs::permissions(source, fs::perms::none);
    installFor(@"Scanmate.pkg");
    fs::permissions(source, fs::perms::owner_all);
    EXPECT_EQ(installed(), Names{});
}

TEST_F(ICCProfiles, LinksInTheSourceLeaveWhatTheyPointToAlone) {
    const fs::path outside = scratch / "outside";
    writeFile(outside / "real.icc", "outside");
    fs::create_directories(source);
    fs::create_symlink(outside / "real.icc", source / "link.icc");
    fs::create_symlink(outside, source / "folder.icc");
    fs::create_symlink("nowhere", source / "dangling.icc");
    fs::create_symlink("loop.icc", source / "loop.icc");
    fs::create_symlink("loop.zip", source / "loop.zip");
    writeFile(source / "plain.icc", "plain");
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(contentsOf(target / "plain.icc"), "plain");
    EXPECT_EQ(items(outside), Names{"real.icc"});
    EXPECT_EQ(contentsOf(outside / "real.icc"), "outside");
    EXPECT_FALSE(fs::exists(staging));
}

TEST_F(ICCProfiles, WhatIsNoFileIsPassedOver) {
    writeFile(source / "plain.icc", "plain");
    ASSERT_EQ(mkfifo((source / "pipe.icc").c_str(), 0600), 0);
    ASSERT_EQ(mkfifo((source / "pipe.zip").c_str(), 0600), 0);
    fs::create_directories(source / "folder.icc");
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(installed(), Names{"plain.icc"});
    EXPECT_EQ(tracedCount("ICC FILE===>"), 1);
    EXPECT_FALSE(fs::exists(staging));
}

TEST_F(ICCProfiles, APipeInTheStagingFolderIsPassedOverToo) {
    fs::create_directories(staging);
    fs::create_directories(source);
    ASSERT_EQ(mkfifo((staging / "pipe.icc").c_str(), 0600), 0);
    writeFile(staging / "left.icc", "left");
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(installed(), Names{"left.icc"});
}

TEST_F(ICCProfiles, NamesThatLookLikePathsElsewhereAreNames) {
    const Names names{"~.icc", "~tester.icc", "C:x.icc", "a:b.icc", "a\\b.icc"};
    for (const std::string &name : names)
        writeFile(source / name, "content of " + name);
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(installed(), names);
    for (const std::string &name : names)
        EXPECT_EQ(contentsOf(target / name), "content of " + name);
}

TEST_F(ICCProfiles, ADamagedArchiveDoesNotKeepThePlainProfilesBack) {
    writeFile(source / "broken.zip", "this is no archive");
    writeFile(source / "a.icc", "a");
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(installed(), Names{"a.icc"});
    EXPECT_FALSE(fs::exists(staging));
}

TEST_F(ICCProfiles, AStagingFolderThatCannotBeMadeEndsTheRun) {
    writeFile(temporary("Vantrel"), "in the way");
    writeFile(source / "a.icc", "a");
    installFor(@"Scanmate.pkg");
    EXPECT_FALSE(fs::exists(target));
    EXPECT_EQ(tracedCount("ICC ASSERT : Creating Vantrel/Profiles Failed"), 1);
    EXPECT_EQ(tracedCount("[Installation Plugin]"), 1);
}

TEST_F(ICCProfiles, ATargetThatCannotBeMadeLeavesTheStagingBehind) {
    writeFile(home() / "Library/Preferences/Kelscan", "in the way");
    writeFile(source / "a.icc", "a");
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(items(staging), Names{"a.icc"});
    EXPECT_EQ(tracedCount("ERROR!!! Creating Kelscan/Quorvel Universal Scan Driver"), 1);
}

TEST_F(ICCProfiles, LeftoversInTheStagingFolderAreInstalledAndCleared) {
    writeFile(staging / "left.icc", "left");
    fs::create_directories(source);
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(installed(), Names{"left.icc"});
    EXPECT_FALSE(fs::exists(staging));
}

TEST_F(ICCProfiles, AStagingFolderThatVanishedIsTold) {
    // An expander that takes the staging folder away.
    writeProgram(scratch / "bin/ditto", "#!/bin/sh\nrm -rf '" + staging.string() + "'\n");
    setenv("PATH", ((scratch / "bin").string() + ":" + std::getenv("PATH")).c_str(), 1);
    writeFile(source / "a.zip", "any");
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(tracedCount("ICC Alert:No files in Vantrel/Profiles"), 1);
}

TEST_F(ICCProfiles, TheCleanUpRemovesTheStagedNamesBelowTheCurrentFolder) {
    writeFile(current / "a.icc", "mine");
    writeFile(current / "b.icc", "mine");
    writeFile(source / "a.icc", "a");
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(items(current), Names{"b.icc"});
    EXPECT_FALSE(fs::exists(staging));
}

TEST_F(ICCProfiles, NothingIsTracedWithTracingOff) {
    field<BOOL>(pane, "VantInstallationDebugFlag") = NO;
    writeFile(source / "a.icc", "a");
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(installed(), Names{"a.icc"});
    EXPECT_EQ(trace(), "");
}

TEST_F(ICCProfiles, NamesOfAnyScriptArrive) {
    const char *const name = "\u00e9t\u00e9 \"q\" $HOME \uc124.icc";
    writeFile(source / name, "a");
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(installed(), Names{name});
}

TEST_F(ICCProfiles, ManyProfilesLeakNoDescriptor) {
    for (int i = 0; i < 300; ++i)
        writeFile(source / ("profile " + std::to_string(i) + ".icc"), "p");
    field<BOOL>(pane, "VantInstallationDebugFlag") = NO;
    const std::size_t before = openDescriptors();
    installFor(@"Scanmate.pkg");
    EXPECT_EQ(installed().size(), 300U);
    EXPECT_LE(openDescriptors(), before + 2);
}
