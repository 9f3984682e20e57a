#import "install/package/VantInstallation+PackageInstaller.h"

#import "InstallTest.h"
#include "Jail.hpp"
#include "ProcessorTime.hpp"

using namespace vant::test;

/// What a package installer can do that it should not: each run ends as the end of its output says, and nothing is
/// lost.
class InstallerBadOutput : public InstallTest {
protected:
    /// Installs one media package with the script as the installer; true when it ends as every ended package does.
    bool endsWith(const std::string &script, double seconds = 20.0) {
        setInstaller(script);
        [mediaList removeAllObjects];
        [outcomes removeAllObjects];
        addMediaPackages(1);
        return installMedia([mediaList lastObject], seconds) && outcome(@"Package 0.pkg") == "PIPE END";
    }
    double progress() { return field<double>(pane, "mProgressindicatorValue"); }
};

TEST_F(InstallerBadOutput, NothingAtAll) {
    EXPECT_TRUE(endsWith("exit 0\n"));
    EXPECT_EQ(progress(), 0.0);
}

TEST_F(InstallerBadOutput, ASilentWhileChangesNothing) {
    EXPECT_TRUE(endsWith("echo 'installer:%20.0'\nsleep 2\necho 'installer:%40.0'\n"));
    EXPECT_EQ(progress(), 40.0);
}

TEST_F(InstallerBadOutput, ALineOfTenMegabytes) {
    EXPECT_TRUE(endsWith("head -c 10000000 /dev/zero | tr '\\0' x\necho\necho 'installer:%40.0'\n"));
    EXPECT_EQ(progress(), 40.0);
}

TEST_F(InstallerBadOutput, ZeroBytesHideTheRestOfTheirLineOnly) {
    EXPECT_TRUE(endsWith("printf 'a\\0installer:%%90.0\\n\\0\\0\\0\\ninstaller:%%40.0\\n'\n"));
    EXPECT_EQ(progress(), 40.0);
}

TEST_F(InstallerBadOutput, BytesThatAreNoText) {
    EXPECT_TRUE(endsWith("printf '\\377\\376\\200\\n\\303installer:%%40.0\\377\\n\\342\\200\\n'\n"));
    EXPECT_EQ(progress(), 40.0);
}

TEST_F(InstallerBadOutput, AMegabyteOfNoise) {
    EXPECT_TRUE(endsWith("head -c 1000000 /dev/urandom\necho\necho 'installer:%40.0'\n"));
    EXPECT_EQ(progress(), 40.0);
}

TEST_F(InstallerBadOutput, AHundredThousandLinesASecond) {
    const std::string lines = "awk 'BEGIN { for (i = 0; i < 100000; ++i) printf \"installer:%%%d.5\\n\", i / 1001 }'\n";
    const double start = processSeconds();
    EXPECT_TRUE(endsWith(lines));
    EXPECT_LT(processSeconds() - start, 5.0);
    EXPECT_EQ(progress(), 99.0);
    EXPECT_TRUE(waitUntil([&] { return barValue() == 99.0; }));
}

TEST_F(InstallerBadOutput, AnOutputClosedEarlyEndsThePackage) {
    const std::string go = (scratch / "go").string();
    EXPECT_TRUE(endsWith("echo 'installer:%40.0'\nexec <&- >&-\nn=0; while [ ! -e '" + go +
                         "' ]; do n=$((n+1)); [ $n -gt 500 ] && exit 1; sleep 0.02; done\n"));
    EXPECT_EQ(progress(), 40.0);
    writeFile(go, "");
}

TEST_F(InstallerBadOutput, AnExitStatusIsNotTold) {
    EXPECT_TRUE(endsWith("echo 'installer: The install failed (Out of paper.)'\nexit 1\n"));
    EXPECT_EQ(text([log names]), text(@[ @"CDInstallComplete" ]));
}

TEST_F(InstallerBadOutput, AKilledInstallerEndsLikeAnyOther) {
    EXPECT_TRUE(endsWith("echo 'installer:%40.0'\nkill -9 $$\n"));
    EXPECT_EQ(progress(), 40.0);
}

TEST_F(InstallerBadOutput, ALineCutByItsEndAtEveryByte) {
    const std::string line = "installer:%40.000000";
    for (std::size_t length = 0; length <= line.size(); ++length) {
        field<double>(pane, "mProgressindicatorValue") = -1.0;
        EXPECT_TRUE(endsWith("printf '%s' '" + line.substr(0, length) + "'\n")) << length << " bytes";
        EXPECT_EQ(progress(), length >= 14 ? 40.0 : -1.0) << length << " bytes";
    }
}

TEST_F(InstallerBadOutput, ALineThatArrivesInPiecesIsOneLine) {
    EXPECT_TRUE(endsWith("for c in i n s t a l l e r : % 4 0 . 0; do printf '%s' $c; sleep 0.01; done; echo\n"));
    EXPECT_EQ(progress(), 40.0);
}

TEST_F(InstallerBadOutput, WordsOfFailureAreNoFailure) {
    EXPECT_TRUE(endsWith("echo fail\necho ' fail'\necho 'fail 1'\necho 1\n"));
    EXPECT_EQ(tracedCount("ASSERT !!!"), 0);
}
