#import "install/chain/VantInstallation+InstallChain.h"

#import "InstallTest.h"
#include "Jail.hpp"

#include <sys/wait.h>

using namespace vant::test;

/// Outcomes that count how often all of them are looked at.
@interface VantCountedOutcomes : NSMutableDictionary {
    NSMutableDictionary *words;
@public
    int looks;
}
@end

@implementation VantCountedOutcomes

- (id)init {
    self = [super init];
    words = [[NSMutableDictionary alloc] init];
    return self;
}

- (NSUInteger)count {
    return [words count];
}

- (id)objectForKey:(id)name {
    return [words objectForKey:name];
}

- (void)setObject:(id)word forKey:(id)name {
    [words setObject:word forKey:name];
}

- (void)removeObjectForKey:(id)name {
    [words removeObjectForKey:name];
}

- (NSEnumerator *)keyEnumerator {
    ++looks;
    return [words keyEnumerator];
}

- (NSArray *)allValues {
    ++looks;
    return [words allValues];
}

@end

class MediaFlow : public InstallTest {
protected:
    /// An installer that writes down the path of each package, one a line.
    void recordPackages() {
        setInstaller("printf '%s\\n' \"$3\" >> '" + (scratch / "packages").string() + "'\necho 'installer:%50.0'\n");
    }
    std::string packages() { return contentsOf(scratch / "packages"); }

    bool completes(double seconds = 30.0) {
        return waitUntil([&] { return [log countOf:@"CDInstallComplete"] > 0; }, seconds);
    }
};

TEST_F(MediaFlow, AnEmptyListChangesNoControl) {
    [downloadBar setHidden:NO];
    [dummyBar setHidden:NO];
    [bar setHidden:YES];
    [bar setDoubleValue:42.0];
    [statusLine setStringValue:@"as it was"];
    [pane InstallCDComponents:mediaList];
    EXPECT_FALSE([downloadBar isHidden]);
    EXPECT_FALSE([dummyBar isHidden]);
    EXPECT_TRUE([bar isHidden]);
    EXPECT_EQ(barValue(), 42.0);
    EXPECT_EQ(statusText(), "as it was");
    EXPECT_EQ(trace(), "");
}

TEST_F(MediaFlow, AnAbsentListChangesNoControl) {
    field<id>(pane, "mInstallCompArrayForCDUpdate") = nil;
    [statusLine setStringValue:@"as it was"];
    [pane InstallCDComponents:nil];
    EXPECT_EQ(statusText(), "as it was");
}

TEST_F(MediaFlow, TheArgumentIsIgnored) {
    [statusLine setStringValue:@"as it was"];
    [pane InstallCDComponents:@[ @{@"TYPE" : @"Fax", @"LOCATION" : @"/x.pkg"} ]];
    EXPECT_EQ(statusText(), "as it was");
}

TEST_F(MediaFlow, TheStartShowsTheInstallingLookAndReturnsWithoutWaiting) {
    setInstaller("sleep 1\n");
    addMediaPackages(1);
    [pane InstallCDComponents:nil];
    EXPECT_EQ([[log names] count], 0U);
    EXPECT_FALSE([bar isHidden]);
    EXPECT_TRUE([dummyBar isHidden]);
    EXPECT_EQ(barValue(), 1.0);
    EXPECT_EQ(statusText(), text([pane localizedStringForKey:@"Installing"]) + "...");
    EXPECT_TRUE(completes());
}

TEST_F(MediaFlow, TheListIsPutIntoTheRequiredOrderAndTraced) {
    followTheChain();
    recordPackages();
    addMedia(@"Printer Software Uninstaller", @"/m/Uninstaller.pkg");
    addMedia(@"Scan Driver", @"/m/Scan Manager.pkg");
    addMedia(@"Print Driver", @"/m/Printer Driver.pkg");
    [pane InstallCDComponents:nil];
    ASSERT_TRUE(completes());
    EXPECT_EQ(packages(), "/m/Printer Driver.pkg\n/m/Scan Manager.pkg\n/m/Uninstaller.pkg\n");
    EXPECT_EQ(tracedCount("Installing start for CD Data ===>:[("), 1);
}

TEST_F(MediaFlow, TheListIsTracedInTheOrderInWhichItIsInstalled) {
    addMedia(@"Printer Software Uninstaller", @"/m/Uninstaller.pkg");
    addMedia(@"Print Driver", @"/m/Printer Driver.pkg");
    followTheChain();
    [pane InstallCDComponents:nil];
    ASSERT_TRUE(completes());
    const std::string written = trace();
    const std::size_t list = written.find("Installing start for CD Data");
    ASSERT_NE(list, std::string::npos);
    ASSERT_NE(written.find("/m/Uninstaller.pkg", list), std::string::npos);
    EXPECT_LT(written.find("/m/Printer Driver.pkg", list), written.find("/m/Uninstaller.pkg", list));
}

TEST_F(MediaFlow, TheStartStopsTheDownloadBarAndStartsTheInstallationBar) {
    addMediaPackages(1);
    [pane InstallCDComponents:nil];
    EXPECT_TRUE([[downloadBar calls] isEqual:@[ @"stop" ]]) << text([downloadBar calls]);
    EXPECT_TRUE([[bar calls] isEqual:@[ @"start" ]]) << text([bar calls]);
    ASSERT_TRUE(completes());
}

TEST_F(MediaFlow, TheStartEmptiesTheStatusLineFirst) {
    addMediaPackages(1);
    [pane InstallCDComponents:nil];
    NSString *installing = [NSString stringWithFormat:@"%@...", [pane localizedStringForKey:@"Installing"]];
    EXPECT_TRUE([[statusLine texts] isEqual:(@[ @"", installing ])]) << text([statusLine texts]);
    ASSERT_TRUE(completes());
}

TEST_F(MediaFlow, OneEntryCompletesWithoutANextPackage) {
    addMediaPackages(1);
    [pane InstallCDComponents:nil];
    ASSERT_TRUE(completes());
    EXPECT_EQ([log countOf:@"InstallNextCDComponent"], 0U);
    EXPECT_EQ([[log names] count], 1U);
}

TEST_F(MediaFlow, TheFirstPackageIsTheOneAtTheProcessesPosition) {
    recordPackages();
    followTheChain();
    addMediaPackages(3);
    [outcomes setObject:@"PIPE END" forKey:@"of an earlier flow"];
    processCounter("cdInstallIndex") = 1;
    [pane InstallCDComponents:nil];
    ASSERT_TRUE(completes());
    EXPECT_EQ(packages(), "/media/Package 1.pkg\n/media/Package 2.pkg\n");
    EXPECT_EQ(processCounter("cdInstallIndex"), 2);
}

TEST_F(MediaFlow, SecondPackageStartsOnAThreadOfItsOwn) {
    followTheChain();
    addMediaPackages(3);
    [pane InstallCDComponents:nil];
    ASSERT_TRUE(completes());
    NSArray *threads = [log threads];
    ASSERT_EQ([threads count], 3U);
    EXPECT_EQ([[NSSet setWithArray:threads] count], 3U);
    EXPECT_FALSE([threads containsObject:[NSThread mainThread]]);
}

TEST_F(MediaFlow, OnePackageInstallsAtATime) {
    followTheChain();
    const std::string busy = (scratch / "busy").string();
    setInstaller("mkdir '" + busy + "' || echo together >> '" + busy + ".log'\nsleep 0.05\nrmdir '" + busy + "'\n");
    addMediaPackages(8);
    [pane InstallCDComponents:nil];
    ASSERT_TRUE(completes());
    EXPECT_EQ(contentsOf(busy + ".log"), "");
}

TEST_F(MediaFlow, AHundredPackagesLeakNoDescriptorAndNoChild) {
    followTheChain();
    addMediaPackages(100);
    const std::size_t before = openDescriptors();
    [pane InstallCDComponents:nil];
    ASSERT_TRUE(completes(60.0));
    EXPECT_EQ([outcomes count], 100U);
    EXPECT_EQ([log countOf:@"InstallNextCDComponent"], 99U);
    // A few descriptors belong to the first use of threads and run loops; a leak would count a hundred.
    EXPECT_TRUE(waitUntil([&] { return openDescriptors() < before + 10; })) << openDescriptors() << " after " << before;
    siginfo_t child{};
    EXPECT_TRUE(waitUntil([&] { return waitid(P_ALL, 0, &child, WEXITED | WNOHANG | WNOWAIT) == -1; }));
}

// Or each package of a long list would cost more than the one before it.
TEST_F(MediaFlow, OnlyTheEndOfAListLooksAtAllOutcomes) {
    auto *const counted = [[VantCountedOutcomes alloc] init];
    field<NSMutableDictionary *>(pane, "mInstalledPackageDict") = counted;
    addMediaPackages(3);
    for (NSString *name in @[ @"Package 0.pkg", @"Package 1.pkg" ]) {
        [counted setObject:@"PIPE END" forKey:name];
        [pane announceWhatFollowsInFlow:vant::Flow::Media];
    }
    EXPECT_EQ(counted->looks, 0);
    [counted setObject:@"Failed" forKey:@"Package 2.pkg"];
    [pane announceWhatFollowsInFlow:vant::Flow::Media];
    EXPECT_EQ([log countOf:@"FindInstallFile3"], 1U);
}
