#include "InstallerFixture.hpp"

namespace fs = std::filesystem;

namespace vant::test {

using samples::archiveOf;
using samples::file;
using samples::Filter;
using samples::Format;
using samples::writeArchive;

namespace {

constexpr const char *head = "#!/bin/sh\n";

class Scripts : public Installer {
protected:
    fs::path package(const std::string &before, const std::string &after) {
        const auto payload = archiveOf(Format::Cpio, Filter::Gzip, {file("./file", "new")});
        const auto scripts = archiveOf(Format::Cpio, Filter::Gzip,
                                       {file("./preinstall", head + before, 0755),
                                        file("./postinstall", head + after, 0755), file("./helper", "of the scripts")});
        return writeArchive(jail_.path("s.pkg"), Format::Xar, Filter::None,
                            {file("PackageInfo", "<pkg-info install-location='/Library'><payload numberOfFiles='1'/>"
                                                 "<scripts><preinstall file='./preinstall'/>"
                                                 "<postinstall file='./postinstall'/></scripts></pkg-info>"),
                             file("Payload", payload), file("Scripts", scripts)});
    }

    void SetUp() override {
        if (runTool("/usr/bin/bwrap", {"--ro-bind", "/", "/", "--unshare-all", "true"}).status != 0)
            GTEST_SKIP() << "this machine does not permit a private root";
    }
};

} // namespace

TEST_F(Scripts, RunBeforeAndAfterTheFilesInTheVolume) {
    const auto run = install(package("test ! -e /Library/file && mkdir -p /var && echo before > /var/order",
                                     "test -e /Library/file && echo after >> /var/order"));
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(treeOf(root()), (Tree{"Library", "Library/file = new", "var", "var/order = before\nafter\n"}))
        << "nothing else is left, no folder of this machine either";
    EXPECT_NE(run.output.find("installer:PHASE:Running package scripts…\n"), std::string::npos);
}

TEST_F(Scripts, GetTheArgumentsAndTheFolderOfThePlatform) {
    const auto path = jail_.path("s.pkg").string();
    const auto run = install(package("exit 0", "echo \"$1|$2|$3|$4|$#\" > /seen; cat helper >> /seen; id -u >> /seen; "
                                               "basename $SCRIPT_NAME >> /seen"));
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(contentsOf(root() / "seen"), path + "|/Library|/|/|4\nof the scripts0\npostinstall\n");
}

TEST_F(Scripts, SeeNothingOfTheMachineButItsPrograms) {
    const auto secret = writeFile(jail_.path("secret"), "s").string();
    const auto run = install(package("test ! -e " + secret + " && test ! -e /home && test ! -e /etc/passwd",
                                     "touch /usr/bin/evil 2>/dev/null && exit 1; exit 0"));
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_FALSE(fs::exists("/usr/bin/evil"));
}

TEST_F(Scripts, ThatFailBeforeTheFilesLeaveThemOut) {
    expectFailed(install(package("exit 3", "exit 0")),
                 "An error occurred while running scripts from the package “s.pkg”.");
    EXPECT_FALSE(fs::exists(root()));
}

TEST_F(Scripts, ThatFailAfterTheFilesTakeThemBack) {
    writeFile(root() / "Library/file", "old");
    writeFile(root() / "Library/kept", "kept");
    expectFailed(install(package("exit 0", "grep -q new /Library/file && exit 1")), "running scripts");
    EXPECT_EQ(treeOf(root()), (Tree{"Library", "Library/file = old", "Library/kept = kept"}));
}

TEST_F(Scripts, OfABundlePackageRunTooWithTheirNeighbours) {
    const auto bundle = samples::writeBundlePackage(jail_.path("B.pkg"), "B", "/", {file("a", "1")});
    writeFile(bundle / "Contents/Resources/text", "neighbour");
    writeProgram(bundle / "Contents/Resources/preflight", std::string(head) + "echo 1 > /order");
    writeProgram(bundle / "Contents/Resources/postflight", std::string(head) + "cat text >> /order");
    writeProgram(bundle / "Contents/Resources/preupgrade", std::string(head) + "exit 1");
    const auto run = install(bundle);
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(treeOf(root()), (Tree{"a = 1", "order = 1\nneighbour"}));
}

TEST_F(Installer, RefusesAPackageWithScriptsWhereNoPrivateRootCanBeMade) {
    writeProgram(jail_.path("bin/bwrap"), "#!/bin/sh\nexit 1\n");
    const auto package =
        writeArchive(jail_.path("s.pkg"), Format::Xar, Filter::None,
                     {file("PackageInfo", "<pkg-info><scripts><postinstall file='./p'/></scripts>"
                                          "</pkg-info>"),
                      file("Scripts", archiveOf(Format::Cpio, Filter::Gzip, {file("./p", head, 0755)}))});
    for (const auto &path : {jail_.path("nothing"), jail_.path("bin")}) {
        const auto run = runTool(installerTool(), {"-verboseR", "-pkg", package, "-target", "/"},
                                 {{"VANT_INSTALL_ROOT", root()}, {"PATH", path}});
        expectFailed(run, "which cannot be run here: bubblewrap is missing or not permitted.");
        EXPECT_FALSE(fs::exists(root()));
    }
}

TEST_F(Installer, RefusesAPackageWhoseScriptsAreMissing) {
    const auto package =
        writeArchive(jail_.path("s.pkg"), Format::Xar, Filter::None,
                     {file("PackageInfo", "<pkg-info><scripts><postinstall file='./p'/></scripts></pkg-info>")});
    const auto run = install(package);
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.errors.find("lacks \"Scripts\""), std::string::npos) << run.errors;
}

} // namespace vant::test
