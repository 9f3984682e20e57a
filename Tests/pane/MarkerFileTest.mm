#import "install/package/VantInstallation+PackageInstaller.h"
#import "install/status/VantInstallation+StatusLine.h"

#import "InstallTest.h"
#include "Jail.hpp"

using namespace vant::test;
namespace fs = std::filesystem;

/// The marker's place is the same for every process of the machine, so these tests run alone.
class MarkerFile : public InstallTest {
protected:
    MarkerFile() { fs::remove(marker); }
    ~MarkerFile() override { fs::remove(marker); }

    /// Whether the marker stands while the output is read, and is gone afterwards. A package that says nothing is read
    /// for a while to tell that no marker comes.
    bool standsWhileReading(SEL operation, NSDictionary *record, const std::string &lastLine) {
        const std::string go = (scratch / "go").string();
        fs::remove(go);
        setInstaller("echo 'installer:%5.0'\nn=0; while [ ! -e '" + go +
                     "' ]; do n=$((n+1)); [ $n -gt 500 ] && exit 1; sleep 0.02; done\n" + lastLine);
        const NSUInteger before = [[log names] count];
        [pane updateProgressWithDoubleValue:0.0];
        [NSThread detachNewThreadSelector:operation toTarget:pane withObject:record];
        // The marker is made before the output is read.
        EXPECT_TRUE(readsProgress());
        const bool stood = fs::exists(marker);
        if (stood) {
            EXPECT_EQ(fs::file_size(marker), 0U);
        }
        writeFile(go, "");
        EXPECT_TRUE(waitUntil([&] { return [[log names] count] > before; }));
        EXPECT_FALSE(fs::exists(marker));
        return stood;
    }

    bool media(NSString *kind, const std::string &lastLine = "") {
        [mediaList removeAllObjects];
        [outcomes removeAllObjects];
        [outcomes setObject:@"PIPE END" forKey:@"earlier"];
        addMedia(@"Fax", @"/m/earlier");
        return standsWhileReading(@selector(installCDComponentAtPath:), addMedia(kind, @"/m/A.pkg"), lastLine);
    }

    bool web(NSString *name) {
        [webList removeAllObjects];
        [outcomes removeAllObjects];
        return standsWhileReading(@selector(installCompoentAtPath:), addWeb(name, @"/w/A.pkg"), "");
    }

    const fs::path marker = "/tmp/universalCD.txt";
};

TEST_F(MarkerFile, StandsWhileThePrinterDriverOfTheMediaIsRead) {
    EXPECT_TRUE(media(@"Print Driver"));
}

TEST_F(MarkerFile, StandsWhileThePrinterDriverOfTheWebIsRead) {
    EXPECT_TRUE(web(@"Printer Driver.pkg"));
}

TEST_F(MarkerFile, EachFlowKnowsItsOwnNameOnly) {
    EXPECT_FALSE(media(@"Printer Driver.pkg"));
    EXPECT_FALSE(web(@"Print Driver"));
    EXPECT_FALSE(media(@"Scan Driver"));
}

TEST_F(MarkerFile, IsGoneAfterAPercent100Line) {
    field<double>(pane, "mProgressindicatorValue") = 0.0;
    addMedia(@"Fax", @"/m/B.pkg");
    EXPECT_TRUE(media(@"Print Driver", "echo 'installer:%100.0'\necho '%100'\n"));
}

TEST_F(MarkerFile, AnyPackagesEndRemovesIt) {
    writeFile(marker, "left by another");
    ASSERT_TRUE(installMedia(addMedia(@"Fax", @"/m/Fax.pkg")));
    EXPECT_FALSE(fs::exists(marker));
}

TEST_F(MarkerFile, ARefusedLaunchMakesNone) {
    removeInstaller();
    [pane installCDComponentAtPath:addMedia(@"Print Driver", @"/m/Printer Driver.pkg")];
    EXPECT_FALSE(fs::exists(marker));
}

TEST_F(MarkerFile, ALinkInItsPlaceIsNotFollowed) {
    fs::create_symlink(scratch / "somebody's", marker);
    EXPECT_TRUE(media(@"Print Driver"));
    EXPECT_FALSE(fs::exists(scratch / "somebody's"));
}

TEST_F(MarkerFile, ALinkInItsPlaceStaysWhenAnotherPackageEnds) {
    fs::create_symlink(scratch / "somebody's", marker);
    ASSERT_TRUE(installMedia(addMedia(@"Fax", @"/m/Fax.pkg")));
    EXPECT_TRUE(fs::is_symlink(marker));
}
