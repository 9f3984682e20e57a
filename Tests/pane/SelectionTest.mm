#import "PaneTest.h"

#import "selection/VantInstallation+InstallOrder.h"
#import "selection/VantInstallation+SelectedSoftware.h"

#include "Jail.hpp"
#include "ProcessorTime.hpp"

using namespace vant::test;

namespace {

NSDictionary *mediaRecord(NSString *kind) {
    return @{@"LOCATION" : @"/media/x.pkg", @"TYPE" : kind};
}

NSDictionary *webRecord(NSString *path, NSString *name) {
    return @{@"installerpath" : path, @"componentname" : name};
}

/// The records' values under a key, joined by "|"; "-" for a record without one.
std::string valuesOf(NSArray *records, NSString *key) {
    NSMutableArray *values = [NSMutableArray array];
    for (id record in records) {
        id value = [record isKindOfClass:[NSDictionary class]] ? [record objectForKey:key] : nil;
        [values addObject:value == nil ? @"-" : value];
    }
    return text([values componentsJoinedByString:@"|"]);
}

} // namespace

class SelectedSoftwareList : public PaneTest {
protected:
    SelectedSoftwareList() {
        createIdlePane();
        field<id>(pane, "mSelectedSoftwareList") = [[NSMutableArray alloc] init];
    }

    std::string kinds() { return text([[pane fetchSelectedSoftwareList] componentsJoinedByString:@"|"]); }
};

TEST_F(SelectedSoftwareList, IsEmptyWithoutSelections) {
    EXPECT_EQ(kinds(), "");
    ASSERT_NE([pane model], nil);
    EXPECT_EQ([[pane model] count], 0U);
}

TEST_F(SelectedSoftwareList, HoldsMediaKindsFirstAndEachOnce) {
    field<id>(pane, "selectedarrXML1") = [@[ entry(@"Scan Driver", @"/a"), entry(@"Scan Driver", @"/b") ] retain];
    field<id>(pane, "selectedarrXML") = [@[ entry(@"Scan Driver", @"/c"), entry(@"Print Driver", @"/d") ] retain];
    EXPECT_EQ(kinds(), "Scan Driver|Print Driver");
}

TEST_F(SelectedSoftwareList, HoldsMediaKindsBeforeThoseThatTheWebAloneNames) {
    field<id>(pane, "selectedarrXML1") = [@[ entry(@"Statora", @"/a"), entry(@"Docuvane", @"/b") ] retain];
    field<id>(pane, "selectedarrXML") = [@[ entry(@"Print Driver", @"/c"), entry(@"Docuvane", @"/d") ] retain];
    EXPECT_EQ(kinds(), "Statora|Docuvane|Print Driver");
}

TEST_F(SelectedSoftwareList, IsTheSameListHoweverOftenItIsFetched) {
    field<id>(pane, "selectedarrXML1") = [@[ entry(@"Statora", @"/a") ] retain];
    NSArray *first = [pane fetchSelectedSoftwareList];
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ([pane fetchSelectedSoftwareList], first);
    EXPECT_EQ(kinds(), "Statora");
}

TEST_F(SelectedSoftwareList, IsGivenToTheHostAsACopy) {
    field<id>(pane, "selectedarrXML1") = [@[ entry(@"Docuvane", @"/a") ] retain];
    NSArray *given = [pane model];
    EXPECT_NE(given, [pane fetchSelectedSoftwareList]);
    EXPECT_TRUE([given isEqual:@[ @"Docuvane" ]]);
}

TEST_F(SelectedSoftwareList, LeavesOutKindsOfAnotherSpellingAndOtherKinds) {
    field<id>(pane, "selectedarrXML1") =
        [@[ entry(@"scan driver", @"/a"), entry(@"User's Guide", @"/b"), entry(@"Printer Software Uninstaller", @"/c") ]
            retain];
    EXPECT_EQ(kinds(), "");
}

TEST_F(SelectedSoftwareList, ReadsTheMediaSelectionAfreshWhileItHoldsNone) {
    field<id>(pane, "selectedarrXML1") = [[NSMutableArray alloc] init];
    writeMediaSelection(@[ entry(@"Pressdeck", @"/a") ]);
    EXPECT_EQ(kinds(), "Pressdeck");
    EXPECT_EQ([field<NSArray *>(pane, "selectedarrXML1") count], 0U) << "the file's entries are not kept";
    writeMediaSelection(@[ entry(@"Statora", @"/a") ]);
    EXPECT_EQ(kinds(), "Pressdeck|Statora");
}

TEST_F(SelectedSoftwareList, DoesNotReadTheFileWhenTheMediaSelectionIsKnown) {
    field<id>(pane, "selectedarrXML1") = [@[ entry(@"Print Driver", @"/a") ] retain];
    writeMediaSelection(@[ entry(@"Pressdeck", @"/a") ]);
    EXPECT_EQ(kinds(), "Print Driver");
}

TEST_F(SelectedSoftwareList, SkipsEntriesOfTheWrongShape) {
    field<id>(pane, "selectedarrXML1") = [@[
        @"Print Driver", @3, @[], @{}, @{@"TYPE" : @"Print Driver"},
        @{@"TYPE" : @{}},
        @{@"TYPE" : @{@"text" : @7}},
        @{@"TYPE" : @[ @"text" ]}, entry(@"Scan Driver", @"/a")
    ] retain];
    EXPECT_EQ(kinds(), "Scan Driver");
}

TEST_F(SelectedSoftwareList, IsTracedBeforeItIsGivenToTheHost) {
    field<id>(pane, "selectedarrXML1") = [@[ entry(@"Statora", @"/a") ] retain];
    (void)[pane model];
    EXPECT_NE(contentsOf(traceLog()).find("model:[(Statora)]"), std::string::npos);
}

class InstallOrder : public PaneTest {
protected:
    static void sort(NSMutableArray *records, NSString *installType) {
        [paneClass() sortMutableListOfComponentsToInstallAsPerRequiredOrder:records foInstallType:installType];
    }
};

TEST_F(InstallOrder, MediaRecordsAreOrderedByTheirKind) {
    NSMutableArray *records = [NSMutableArray array];
    for (NSString *kind in @[ @"Printer Software Uninstaller", @"PC fax Utility", @"Print Driver", @"Scan Driver" ])
        [records addObject:mediaRecord(kind)];
    sort(records, @"CD");
    EXPECT_EQ(valuesOf(records, @"TYPE"), "Print Driver|Scan Driver|PC fax Utility|Printer Software Uninstaller");
}

TEST_F(InstallOrder, WebRecordsAreOrderedByTheirComponentName) {
    NSMutableArray *records = [NSMutableArray array];
    for (NSString *name in @[ @"Fax.pkg", @"Scan Manager.pkg", @"Printer Driver.pkg", @"User's Guide" ])
        [records addObject:webRecord(@"/a", name)];
    sort(records, @"SmartUpdate");
    EXPECT_EQ(valuesOf(records, @"componentname"), "Printer Driver.pkg|Fax.pkg|Scan Manager.pkg|User's Guide");
}

TEST_F(InstallOrder, EachInstallTypeReadsItsOwnValueAndAnUnknownOneReadsNone) {
    NSArray *records = @[
        @{@"TYPE" : @"Fax.pkg", @"componentname" : @"Pressdeck"},
        @{@"TYPE" : @"Print Driver", @"componentname" : @"Manual.pkg"}
    ];
    for (NSString *installType in @[ @"SmartUpdate", @"cd", @"", @"DVD" ]) {
        NSMutableArray *list = [NSMutableArray arrayWithArray:records];
        sort(list, installType);
        EXPECT_TRUE([list isEqual:records]) << text(installType);
    }
    NSMutableArray *list = [NSMutableArray arrayWithArray:records];
    sort(list, nil);
    EXPECT_TRUE([list isEqual:records]);
    sort(list, @"CD");
    EXPECT_EQ(valuesOf(list, @"TYPE"), "Print Driver|Fax.pkg");
}

TEST_F(InstallOrder, RecordsWithTheSameNameKeepTheirOrderAndIdentity) {
    NSDictionary *first = @{@"TYPE" : @"Scan Driver", @"LOCATION" : @"/1"};
    NSDictionary *second = @{@"TYPE" : @"Scan Driver", @"LOCATION" : @"/2"};
    NSDictionary *driver = mediaRecord(@"Print Driver");
    NSMutableArray *records = [NSMutableArray arrayWithObjects:first, second, driver, nil];
    sort(records, @"CD");
    EXPECT_EQ([records objectAtIndex:0], driver);
    EXPECT_EQ([records objectAtIndex:1], first);
    EXPECT_EQ([records objectAtIndex:2], second);
}

TEST_F(InstallOrder, TheVerySameRecordTwiceIsPlacedTwice) {
    NSDictionary *twice = mediaRecord(@"Statora");
    NSDictionary *driver = mediaRecord(@"Scan Driver");
    NSMutableArray *records = [NSMutableArray arrayWithObjects:twice, driver, twice, driver, nil];
    sort(records, @"CD");
    EXPECT_EQ(valuesOf(records, @"TYPE"), "Scan Driver|Scan Driver|Statora|Statora");
}

TEST_F(InstallOrder, ListsWithoutReadableNamesStayAsTheyAre) {
    NSMutableArray *records = [NSMutableArray array];
    sort(records, @"CD");
    EXPECT_EQ([records count], 0U);
    [records addObjectsFromArray:@[ @{}, @{@"LOCATION" : @"/a"}, @{@"TYPE" : @4}, @"Print Driver", @9 ]];
    NSArray *before = [NSArray arrayWithArray:records];
    sort(records, @"CD");
    EXPECT_TRUE([records isEqual:before]);
}

TEST_F(InstallOrder, AHundredThousandRecordsAreOrderedAtOnce) {
    NSMutableArray *records = [NSMutableArray array];
    for (int i = 0; i < 100000; ++i)
        [records addObject:mediaRecord(i % 2 == 0 ? @"Scan Driver" : @"Print Driver")];
    const double start = processSeconds();
    sort(records, @"CD");
    EXPECT_LT(processSeconds() - start, 10.0);
    EXPECT_TRUE([[[records objectAtIndex:49999] objectForKey:@"TYPE"] isEqual:@"Print Driver"]);
    EXPECT_TRUE([[[records objectAtIndex:50000] objectForKey:@"TYPE"] isEqual:@"Scan Driver"]);
}

class SmartUpdateFilter : public PaneTest {
protected:
    SmartUpdateFilter() { createIdlePane(); }

    NSMutableArray *list() { return field<NSMutableArray *>(pane, "mInstallCompArrayForSmartUpdate"); }
};

TEST_F(SmartUpdateFilter, OnlyTheEarlierOfTwoRecordsWithOnePathStays) {
    [list() addObjectsFromArray:@[
        webRecord(@"/a.pkg", @"Fax.pkg"), webRecord(@"/a.pkg", @"Manual.pkg"), webRecord(@"/b.pkg", @"Fax.pkg"),
        webRecord(@"/a.pkg", @"Pressdeck")
    ]];
    [pane filteroutRedundantComponentsforSmartUpdate];
    EXPECT_EQ(valuesOf(list(), @"installerpath"), "/a.pkg|/b.pkg");
    EXPECT_EQ(valuesOf(list(), @"componentname"), "Fax.pkg|Fax.pkg");
}

TEST_F(SmartUpdateFilter, RecordsWithoutAPathStay) {
    [list() addObjectsFromArray:@[
        @{}, @{@"componentname" : @"Fax.pkg"}, @{},
        @{@"installerpath" : @1},
        @{@"installerpath" : @1}
    ]];
    [pane filteroutRedundantComponentsforSmartUpdate];
    EXPECT_EQ([list() count], 5U);
}

TEST_F(SmartUpdateFilter, LegacyScanPackagesAreDropped) {
    [list() addObjectsFromArray:@[
        webRecord(@"/1", @"Scanmate.pkg"), webRecord(@"/2", @"Scan Driver"), webRecord(@"/3", @"Scan Manager.pkg"),
        webRecord(@"/4", @"scanmate.pkg")
    ]];
    [pane filteroutScanLegacyComponentsforSmartUpdate];
    EXPECT_EQ(valuesOf(list(), @"installerpath"), "/2|/4");
}

TEST_F(SmartUpdateFilter, TheUninstallerIsFoundByFileNameAndNothingIsAdded) {
    EXPECT_FALSE([pane addUninstallerPackageIfNotPresent]);
    [list() addObject:webRecord(@"/a/Fax.pkg", @"Uninstaller.pkg")];
    EXPECT_FALSE([pane addUninstallerPackageIfNotPresent]);
    EXPECT_EQ([list() count], 1U);
    [list() addObject:webRecord(@"/a/Uninstaller.pkg", @"anything")];
    EXPECT_TRUE([pane addUninstallerPackageIfNotPresent]);
    EXPECT_EQ([list() count], 2U);
}
