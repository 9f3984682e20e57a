#include "InstallerFixture.hpp"

namespace fs = std::filesystem;

namespace vant::test {

using samples::file;
using samples::folder;
using samples::link;
using samples::writeFlatPackage;
using samples::writeProduct;

TEST_F(Installer, LinksLeadWhereThePackageSaysAndAreNeverWrittenThrough) {
    const auto package = jail_.path("a.pkg");
    for (const auto *target : {"/Applications/A", "../../Shared", "../../../../..", "a/../b"}) {
        const auto run = install(writeFlatPackage(package, "a", "/Library/X", {link("l", target)}));
        EXPECT_EQ(run.status, 0) << run.errors;
        EXPECT_EQ(fs::read_symlink(root() / "Library/X/l"), target);
        expectFailed(install(writeFlatPackage(package, "a", "/Library/X", {link("m", target), file("m/x", "x")})),
                     "m: not a folder");
    }
}

TEST_F(Installer, FollowsALinkOfTheVolumeInsideTheVolume) {
    for (const auto *target : {"private/tmp", "/private/tmp", "../../private/tmp"}) {
        fs::create_directories(root() / "private/tmp");
        fs::create_directory_symlink(target, root() / "tmp");
        const auto run = install(writeFlatPackage(jail_.path("a.pkg"), "a", "/", {folder("tmp"), file("tmp/x", "x")}));
        EXPECT_EQ(run.status, 0) << target << run.errors;
        EXPECT_EQ(treeOf(root()),
                  (Tree{"private", "private/tmp", "private/tmp/x = x", "tmp -> " + std::string(target)}));
        fs::remove_all(root());
    }
}

TEST_F(Installer, AComponentMayBeInstalledBehindALinkOfTheVolume) {
    fs::create_directories(root() / "private/var");
    fs::create_directory_symlink("private/var", root() / "var");
    EXPECT_EQ(install(writeFlatPackage(jail_.path("a.pkg"), "a", "/var/db/new", {file("x", "x")})).status, 0);
    EXPECT_EQ(contentsOf(root() / "private/var/db/new/x"), "x");
}

TEST_F(Installer, ThatFailsInTheMiddleLeavesTheVolumeAsItWas) {
    writeFile(root() / "a", "old");
    writeFile(root() / "z/precious", "kept");
    const Tree before{"a = old", "z", "z/precious = kept"};
    const auto package = jail_.path("a.pkg");
    expectFailed(install(writeFlatPackage(package, "a", "/", {file("a", "new"), file("b", "new"), file("z", "new")})),
                 "z: a folder is in the way");
    EXPECT_EQ(treeOf(root()), before);
    expectFailed(install(writeProduct(package, "P",
                                      {{"1.pkg", "/", {file("a", "new"), file("new/b", "new")}},
                                       {"2.pkg", "/", {file("../evil", "x")}}})),
                 "refused");
    EXPECT_EQ(treeOf(root()), before);
}

TEST_F(Installer, ALaterComponentReplacesWhatAnEarlierOneBrought) {
    const auto run = install(writeProduct(
        jail_.path("p.pkg"), "P",
        {{"1.pkg", "/L", {file("a", "1"), file("d/b", "1")}}, {"2.pkg", "/", {file("L/a", "2"), file("L/d/c", "2")}}}));
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(treeOf(root()), (Tree{"L", "L/a = 2", "L/d", "L/d/b = 1", "L/d/c = 2"}));
}

TEST_F(Installer, ReadsAnInfoPlistInItsBinaryForm) {
    const auto package = samples::writeBundlePackage(jail_.path("B.pkg"), "Old", "/Old", {file("a", "1")});
    // {"CFBundleName": "New", "IFPkgFlagDefaultLocation": "/New"}
    const std::string objects = "\xD2\x01\x02\x03\x04\x5C"
                                "CFBundleName\x5F\x10\x18IFPkgFlagDefaultLocation\x53New\x54/New";
    const std::string offsets{8, 13, 26, 53, 57};
    std::string plist = "bplist00" + objects + offsets + std::string(6, '\0') + "\x01\x01";
    for (const auto number : {std::size_t{5}, std::size_t{0}, 8 + objects.size()})
        plist += std::string(7, '\0') + static_cast<char>(number);
    writeFile(package / "Contents/Info.plist", plist);
    const auto run = install(package);
    EXPECT_EQ(linesOf(run.output).front(), "installer: Package name is New");
    EXPECT_EQ(treeOf(root()), (Tree{"New", "New/a = 1"}));
}

} // namespace vant::test
