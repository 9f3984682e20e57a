#import "install/package/VantInstallation+PackageInstaller.h"
#import "install/status/VantInstallation+StatusLine.h"

#import "InstallTest.h"
#include "Jail.hpp"
#include <atomic>

using namespace vant::test;

namespace {

std::atomic<int> countedTextsMade = 0;
std::atomic<int> countedTextsGone = 0;

} // namespace

/// An empty text that is counted from its making to its end.
@interface VantCountedText : NSString
@end

@implementation VantCountedText

- (id)init {
    self = [super init];
    ++countedTextsMade;
    return self;
}

- (void)dealloc {
    ++countedTextsGone;
    [super dealloc];
}

- (NSUInteger)length {
    return 0;
}

- (unichar)characterAtIndex:(NSUInteger)index {
    (void)index;
    return 0;
}

@end

static NSString *countedText(id /*pane*/, SEL /*operation*/, NSString * /*component*/) {
    return [[[VantCountedText alloc] init] autorelease];
}

class PackageInstaller : public InstallTest {
protected:
    std::string argumentsOf(NSString *path) {
        const std::string file = (scratch / "arguments").string();
        setInstaller("printf '<%s>' \"$@\" > '" + file + "'\n");
        EXPECT_TRUE(installMedia(addMedia(@"Fax", path)));
        return contentsOf(file);
    }

    /// Waits for a condition of the main thread's controls.
    bool shows(double value) {
        return waitUntil([&] { return barValue() == value; });
    }
};

TEST_F(PackageInstaller, TheToolIsGivenThePackageAndTheRootVolume) {
    EXPECT_EQ(argumentsOf(@"/media/Fax.pkg"), "<-verboseR><-pkg></media/Fax.pkg><-target></>");
}

TEST_F(PackageInstaller, APathIsOneArgumentWhateverItHolds) {
    EXPECT_EQ(argumentsOf(@"/a b/\"q\" 'q' $HOME `id` \\\n*/\u00e9t\u00e9 \uc124.pkg"),
              "<-verboseR><-pkg></a b/\"q\" 'q' $HOME `id` \\\n*/\u00e9t\u00e9 \uc124.pkg><-target></>");
    EXPECT_EQ([outcomes count], 1U);
    EXPECT_EQ(outcome(@"\u00e9t\u00e9 \uc124.pkg"), "PIPE END");
}

TEST_F(PackageInstaller, AListOfOneCompletesWithoutANextPackage) {
    ASSERT_TRUE(installMedia(addMedia(@"Fax", @"/media/Fax.pkg")));
    EXPECT_EQ([[log names] count], 1U);
    NSNotification *ended = [[log notifications] lastObject];
    EXPECT_EQ(text([ended name]), "CDInstallComplete");
    EXPECT_EQ([ended object], nil);
    EXPECT_EQ([ended userInfo], nil);
    EXPECT_NE([[log threads] lastObject], [NSThread mainThread]);
    EXPECT_EQ(tracedCount("Posting notification:[CDInstallComplete]"), 1);
}

TEST_F(PackageInstaller, AWebListOfOneCompletesWithItsOwnName) {
    ASSERT_TRUE(installWeb(addWeb(@"Fax.pkg", @"/web/Fax.pkg")));
    NSNotification *ended = [[log notifications] lastObject];
    EXPECT_EQ(text([ended name]), "SUInstallComplete");
    EXPECT_EQ([ended object], nil);
    EXPECT_EQ([ended userInfo], nil);
    EXPECT_EQ(outcome(@"Fax.pkg"), "PIPE END");
    EXPECT_EQ(tracedCount("Posting notification:[SUInstallComplete]"), 1);
}

TEST_F(PackageInstaller, TheNextPackageIsAnnouncedWithItsRecord) {
    NSDictionary *first = addMedia(@"Fax", @"/media/A.pkg");
    NSDictionary *second = addMedia(@"Fax", @"/media/B.pkg");
    ASSERT_TRUE(installMedia(first));
    NSNotification *ended = [[log notifications] lastObject];
    EXPECT_EQ(text([ended name]), "InstallNextCDComponent");
    EXPECT_EQ([ended object], second);
    EXPECT_EQ([ended userInfo], nil);
    EXPECT_EQ(processCounter("cdInstallIndex"), 1);
    EXPECT_EQ(tracedCount("Posting notification:[InstallNextCDComponent] cdInstallIndex[0] mInstalledPackageDict[1] "
                          "mInstallCompArrayForCDUpdate[2]"),
              1);
}

TEST_F(PackageInstaller, TheNextWebPackageIsAnnouncedWithItsRecord) {
    NSDictionary *first = addWeb(@"Fax.pkg", @"/web/Fax.pkg");
    NSDictionary *second = addWeb(@"Hueforge.pkg", @"/web/Hueforge.pkg");
    ASSERT_TRUE(installWeb(first));
    NSNotification *ended = [[log notifications] lastObject];
    EXPECT_EQ(text([ended name]), "InstallNextSUComponent");
    EXPECT_EQ([ended object], second);
    EXPECT_EQ(tracedCount("Posting notification:[InstallNextSUComponent] cdInstallIndex[0] mInstalledPackageDict[1] "
                          "mInstallCompArrayForSmartUpdate[2]"),
              1);
}

TEST_F(PackageInstaller, AFailedPackageEndsTheMediaListWithoutCompletion) {
    [outcomes setObject:@"Failed" forKey:@"A.pkg"];
    addMedia(@"Fax", @"/media/A.pkg");
    NSDictionary *last = addMedia(@"Fax", @"/media/B.pkg");
    ASSERT_TRUE(installMedia(last));
    EXPECT_EQ(text([log names]), text(@[ @"FindInstallFile3" ]));
    EXPECT_EQ(tracedCount("Posting notification FAILED:[FindInstallFile3]"), 1);
}

TEST_F(PackageInstaller, AFailedPackageDoesNotKeepTheWebListFromCompleting) {
    [outcomes setObject:@"Failed" forKey:@"A.pkg"];
    addWeb(@"A.pkg", @"/web/A.pkg");
    ASSERT_TRUE(installWeb(addWeb(@"B.pkg", @"/web/B.pkg")));
    EXPECT_EQ(text([log names]), text(@[ @"SUInstallComplete" ]));
}

TEST_F(PackageInstaller, MoreOutcomesThanPackagesAnnounceNothing) {
    [outcomes setObject:@"PIPE END" forKey:@"of another list"];
    [pane installCDComponentAtPath:addMedia(@"Fax", @"/media/A.pkg")];
    EXPECT_EQ([outcomes count], 2U);
    EXPECT_EQ([[log names] count], 0U);
    EXPECT_EQ(processCounter("cdInstallIndex"), 0);
}

TEST_F(PackageInstaller, TheEndOfTheOutputReplacesCompleted) {
    setInstaller("echo 'installer:%100.000000'\n");
    addMediaPackages(1);
    ASSERT_TRUE(installMedia([mediaList lastObject]));
    EXPECT_EQ(outcome(@"Package 0.pkg"), "PIPE END");
}

TEST_F(PackageInstaller, TheStatusTellsLaunchAndEnd) {
    field<int>(pane, "status") = 77;
    addMediaPackages(3);
    // This line ends the reading, so what the launch gave stays.
    setInstaller("echo '%100'\n");
    ASSERT_TRUE(installMedia([mediaList objectAtIndex:0]));
    EXPECT_EQ(field<int>(pane, "status"), 0);
    setInstaller("exit 0\n");
    ASSERT_TRUE(installMedia([mediaList objectAtIndex:1]));
    EXPECT_EQ(field<int>(pane, "status"), -1278);
}

TEST_F(PackageInstaller, APercent100LineEndsReadingWithoutAnOutcome) {
    setInstaller("echo 'installer:%99.9'\necho '%100'\necho 'installer:%100.0'\n");
    addMediaPackages(2);
    ASSERT_TRUE(installMedia([mediaList objectAtIndex:0]));
    EXPECT_EQ([outcomes count], 0U);
    EXPECT_EQ(field<int>(pane, "status"), 0);
    EXPECT_EQ(text([log names]), text(@[ @"InstallNextCDComponent" ]));
}

TEST_F(PackageInstaller, APercent100LineKeepsAnEarlierCompleted) {
    setInstaller("echo 'installer:%100.0'\necho '%100.000000'\n");
    addMediaPackages(1);
    ASSERT_TRUE(installMedia([mediaList objectAtIndex:0]));
    EXPECT_EQ(outcome(@"Package 0.pkg"), "Completed");
    EXPECT_EQ(text([log names]), text(@[ @"CDInstallComplete" ]));
}

TEST_F(PackageInstaller, AnInstallerThatWritesOnAfterPercent100IsReadToItsEnd) {
    setInstaller("echo '%100'\nsleep 0.2\nseq 1 100000 && echo whole > '" + (scratch / "end").string() + "'\n");
    addMediaPackages(2);
    ASSERT_TRUE(installMedia([mediaList objectAtIndex:0]));
    EXPECT_TRUE(waitUntil([&] { return contentsOf(scratch / "end") == "whole\n"; }));
}

TEST_F(PackageInstaller, WhatFollowsIsAnnouncedBeforeTheRestOfTheOutputHasBeenRead) {
    addMediaPackages(2);
    const std::string go = (scratch / "go").string();
    setInstaller("echo '%100'\nwhile [ ! -e '" + go + "' ]; do sleep 0.02; done\n");
    EXPECT_TRUE(installMedia([mediaList objectAtIndex:0], 10.0)) << "waits for the installer's end";
    writeFile(go, "");
}

TEST_F(PackageInstaller, ARefusedLaunchStopsTheChain) {
    removeInstaller();
    addMediaPackages(2);
    [pane installCDComponentAtPath:[mediaList objectAtIndex:0]];
    EXPECT_EQ([outcomes count], 0U);
    EXPECT_EQ([[log names] count], 0U);
    EXPECT_EQ(field<int>(pane, "status"), errAuthorizationToolExecuteFailure);
    EXPECT_EQ(tracedCount("***ERROR*** Authorization error:[-60031]"), 1);
    EXPECT_EQ(tracedCount("[Installation Plugin]"), 1);
}

TEST_F(PackageInstaller, WithoutAnAuthorizationNothingIsLaunched) {
    field<AuthorizationRef>(pane, "authorizationRef") = nullptr;
    [pane installCompoentAtPath:addWeb(@"Fax.pkg", @"/web/Fax.pkg")];
    EXPECT_EQ([outcomes count], 0U);
    EXPECT_EQ(tracedCount("***ERROR*** Authorization error:[-60002]"), 1);
}

TEST_F(PackageInstaller, TheMediaBarShowsTheListsProgress) {
    addMediaPackages(4);
    processCounter("cdInstallIndex") = 1;
    setInstaller("echo 'installer:%80.999999'\n");
    ASSERT_TRUE(installMedia([mediaList objectAtIndex:1]));
    EXPECT_TRUE(shows(1.0 / 4.0 * 80.0 * 2.0));
    EXPECT_EQ(field<double>(pane, "mProgressindicatorValue"), 40.0);
}

TEST_F(PackageInstaller, TheWebBarShowsItsShareOfWhatRemains) {
    for (NSString *name in @[ @"A.pkg", @"B.pkg", @"C.pkg", @"D.pkg" ])
        addWeb(name, [@"/web/" stringByAppendingString:name]);
    processCounter("cdInstallIndex") = 1;
    const std::string go = (scratch / "go").string();
    setInstaller("echo 'installer:%60.999999'\nwhile [ ! -e '" + go + "' ]; do sleep 0.02; done\n");
    [NSThread detachNewThreadSelector:@selector(installCompoentAtPath:)
                             toTarget:pane
                           withObject:[webList objectAtIndex:1]];
    EXPECT_TRUE(shows(20.0));
    EXPECT_EQ(field<double>(pane, "mProgressindicatorValue"), 30.0);
    writeFile(go, "");
    EXPECT_TRUE(waitUntil([&] { return [[log names] count] == 1; }));
}

TEST_F(PackageInstaller, TheWebShareIsComputedWhenTheUpdateRuns) {
    for (NSString *name in @[ @"A.pkg", @"B.pkg", @"C.pkg" ])
        addWeb(name, [@"/web/" stringByAppendingString:name]);
    setInstaller("echo 'installer:%30.0'\n");
    // On the main thread, so that the update can run only after the position has advanced.
    [pane installCompoentAtPath:[webList objectAtIndex:0]];
    EXPECT_EQ(processCounter("cdInstallIndex"), 1);
    EXPECT_TRUE(shows(15.0));
}

TEST_F(PackageInstaller, TheMediaBarShowsWhatHoldsWhenTheUpdateRuns) {
    addMediaPackages(1);
    setInstaller("echo 'installer:%30.0'\necho 'installer:%0.0'\n");
    // On the main thread, so that the update of the first line can run only after the second one.
    [pane installCDComponentAtPath:[mediaList lastObject]];
    EXPECT_EQ(statusText(), "");
    ASSERT_TRUE(waitUntil([&] { return !statusText().empty(); }));
    EXPECT_EQ(barValue(), 0.0);
}

TEST_F(PackageInstaller, TheTextsOfUpdatesAreGivenBackWhileThePackageIsStillInstalled) {
    method_setImplementation(class_getInstanceMethod([pane class], @selector(displayInstallingForComponent:)),
                             reinterpret_cast<IMP>(countedText));
    field<id>(pane, "mProgressInfoTF") = nil; // it would keep them
    addMediaPackages(1);
    const std::string go = (scratch / "go").string();
    setInstaller("for i in 1 2 3 4 5 6 7 8 9; do echo \"installer:%$i.0\"; done\nwhile [ ! -e '" + go +
                 "' ]; do sleep 0.02; done\n");
    [NSThread detachNewThreadSelector:@selector(installCDComponentAtPath:)
                             toTarget:pane
                           withObject:[mediaList lastObject]];
    EXPECT_TRUE(waitUntil([] { return countedTextsMade == 9 && countedTextsGone == 9; }))
        << countedTextsGone << " of " << countedTextsMade;
    writeFile(go, "");
    EXPECT_TRUE(waitUntil([&] { return [[log names] count] == 1; }));
}

TEST_F(PackageInstaller, ThreadsHaveAPoolOfTheirOwn) {
    addMediaPackages(1);
    testing::internal::CaptureStderr();
    const bool ended = installMedia([mediaList lastObject]);
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(ended);
    EXPECT_EQ(said.find("without pool"), std::string::npos) << said;
}

TEST_F(PackageInstaller, FallingAndRepeatedPercentagesQueueNothing) {
    addMediaPackages(1);
    const std::string go = (scratch / "go").string();
    setInstaller("echo 'installer:%50.0'\nwhile [ ! -e '" + go +
                 "' ]; do sleep 0.02; done\necho 'installer:%50.0'\necho 'installer:%49.9'\necho 'installer:%50.9'\n");
    [NSThread detachNewThreadSelector:@selector(installCDComponentAtPath:)
                             toTarget:pane
                           withObject:[mediaList lastObject]];
    ASSERT_TRUE(shows(50.0));
    writeFile(go, "");
    ASSERT_TRUE(waitUntil([&] { return [[log names] count] == 1; }));
    // Every queued update has traced its word order once.
    EXPECT_EQ(tracedCount("Language Default: English"), 1);
    EXPECT_EQ(barValue(), 50.0);
}

TEST_F(PackageInstaller, ALineWithoutAPointAmongFiveCharactersUpdatesNothing) {
    addMediaPackages(1);
    setInstaller("echo 'installer:%50'\necho 'installer:%12345.0'\nprintf 'installer:%%5'\n");
    ASSERT_TRUE(installMedia([mediaList lastObject]));
    EXPECT_EQ(field<double>(pane, "mProgressindicatorValue"), 0.0);
    EXPECT_EQ(tracedCount("Language"), 0);
}

TEST_F(PackageInstaller, AShortRestBehindTheMarkerIsTakenAsItIs) {
    addMediaPackages(1);
    setInstaller("printf 'installer:%%7.'\n");
    ASSERT_TRUE(installMedia([mediaList lastObject]));
    EXPECT_TRUE(shows(7.0));
}

TEST_F(PackageInstaller, TheStatusLineNamesTheComponent) {
    setInstaller("echo 'installer:%50.0'\n");
    ASSERT_TRUE(installMedia(addMedia(@"Print Driver", @"/media/Printer Driver.pkg")));
    const std::string word = text([pane localizedStringForKey:@"Installing"]);
    const std::string name = text([pane localizedStringForKey:@"PrinterComponent"]);
    EXPECT_TRUE(waitUntil([&] { return statusText() == word + " " + name + "..."; })) << statusText();
}

TEST_F(PackageInstaller, FileNamesAreDisplayNamesInTheMediaFlow) {
    setInstaller("echo 'installer:%50.0'\n");
    ASSERT_TRUE(installMedia(addMedia(@"Scan Manager.pkg", @"/media/Scan Manager.pkg")));
    const std::string word = text([pane localizedStringForKey:@"Installing"]);
    EXPECT_TRUE(waitUntil([&] { return statusText() == word + " Scan Manager.pkg..."; })) << statusText();
}

TEST_F(PackageInstaller, FileNamesAreTranslatedInTheWebFlow) {
    setInstaller("echo 'installer:%50.0'\n");
    ASSERT_TRUE(installWeb(addWeb(@"Scan Manager.pkg", @"/web/Scan Manager.pkg")));
    const std::string word = text([pane localizedStringForKey:@"Installing"]);
    EXPECT_TRUE(waitUntil([&] { return statusText() == word + " Scan Manager..."; })) << statusText();
}

TEST_F(PackageInstaller, ProfilesAreInstalledWhileTheInstallerWorks) {
    const std::string target = (home() / "Library/Preferences/Kelscan/Quorvel Universal Scan Driver/Profiles").string();
    // The installer waits for the profile folder, which is made before its output is read.
    setInstaller("n=0; while [ ! -d '" + target +
                 "' ]; do n=$((n+1)); [ $n -gt 200 ] && exit 1; sleep 0.05; done\necho seen > '" +
                 (scratch / "seen").string() + "'\n");
    ASSERT_TRUE(installMedia(addMedia(@"Scan Driver", @"/media/Scan Manager.pkg")));
    EXPECT_EQ(contentsOf(scratch / "seen"), "seen\n");
}

TEST_F(PackageInstaller, ARefusedLaunchInstallsNoProfiles) {
    removeInstaller();
    [pane installCDComponentAtPath:addMedia(@"Scan Driver", @"/media/Scan Manager.pkg")];
    EXPECT_FALSE(std::filesystem::exists(home() / "Library/Preferences/Kelscan"));
}

namespace {

struct RecordCase {
    const char *what;
    id record;
};

} // namespace

TEST_F(PackageInstaller, ValuesOfAnotherTypeCountAsAbsent) {
    const std::string file = (scratch / "arguments").string();
    setInstaller("printf '<%s>' \"$@\" > '" + file + "'\necho 'installer:%50.0'\n");
    const RecordCase cases[] = {
        {"an empty record", @{}},
        {"numbers", @{@"LOCATION" : @(5), @"TYPE" : @(7), @"installerpath" : @(5), @"componentname" : @(7)}},
        {"lists", @{@"LOCATION" : @[ @"/a" ], @"TYPE" : @[], @"installerpath" : @[ @"/a" ], @"componentname" : @[]}},
        {"a text", @"/media/A.pkg"},
        {"no record", nil},
    };
    addMediaPackages(1);
    [webList addObject:@{}];
    for (const RecordCase &row : cases) {
        [outcomes removeAllObjects];
        std::filesystem::remove(file);
        EXPECT_TRUE(installMedia(row.record)) << row.what;
        EXPECT_EQ(contentsOf(file), "<-verboseR><-pkg><><-target></>") << row.what;
        EXPECT_EQ(text([outcomes allKeys]), text(@[ @"" ])) << row.what;
        EXPECT_EQ(outcome(@""), "PIPE END") << row.what;
        EXPECT_TRUE(installWeb(row.record)) << row.what;
    }
    EXPECT_EQ([log countOf:@"CDInstallComplete"], 5U);
    EXPECT_EQ([log countOf:@"SUInstallComplete"], 5U);
}
