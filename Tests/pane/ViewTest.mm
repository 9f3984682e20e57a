#import "PaneTest.h"

#import "download/VantInstallation+WebDriver.h"
#import "selection/VantInstallation+MediaList.h"
#import "ui/VantInstallation+AdministratorRights.h"
#import "ui/VantInstallation+Views.h"

#include "Jail.hpp"
#include "ProcessorTime.hpp"
#include <cstdlib>

using namespace vant::test;

namespace fs = std::filesystem;

namespace {

/// The pane whose rows an observer of the tests changes.
VantInstallation *watchedPane = nil;

/// The name of the exception that an operation raises, empty when it raises none.
std::string nameOfExceptionFrom(id target, SEL operation) {
    @try {
        [target performSelector:operation withObject:nil];
    } @catch (NSException *exception) {
        return text([exception name]);
    }
    return "";
}

int reloads = 0;

void countReload(id, SEL) {
    ++reloads;
}

} // namespace

/// Unticks the second row at the moment the rights were granted, between the making of the rows and their downloads.
@interface VantUntickingObserver : VantRecordingObserver
@end

@implementation VantUntickingObserver

- (void)setIsButton3Enabled:(BOOL)enabled {
    (void)enabled;
    [[field<NSArray *>(watchedPane, "objects") objectAtIndex:1] setCheckBTStatus:NO];
}

@end

class Views : public PaneTest {
protected:
    NSMutableArray *mediaList() { return field<NSMutableArray *>(pane, "mInstallCompArrayForCDUpdate"); }

    /// The media list as "kind@location", joined by "|".
    std::string mediaRecords() {
        NSMutableArray *records = [NSMutableArray array];
        for (NSDictionary *record in mediaList())
            [records addObject:[NSString stringWithFormat:@"%@@%@", [record objectForKey:@"TYPE"],
                                                          [record objectForKey:@"LOCATION"]]];
        return text([records componentsJoinedByString:@"|"]);
    }

    std::string locations() {
        return text([field<NSArray *>(pane, "selectedmodellocations") componentsJoinedByString:@"|"]);
    }

    std::string uninstaller() { return "Printer Software Uninstaller@" + hostResource("Uninstaller.pkg").string(); }

    void startWebView(NSArray *entries) {
        createIdlePane();
        field<id>(pane, "objects") = [[NSMutableArray alloc] init];
        field<id>(pane, "selectedarrXML") = [entries retain];
        watchedPane = pane;
        [pane showNormalView];
    }

    void startMediaView(NSArray *entries) {
        createIdlePane();
        field<id>(pane, "objects1") = [[NSMutableArray alloc] init];
        field<id>(pane, "selectedarrXML1") = [entries retain];
        [pane showNormalViewforCDInstallation];
    }

    static void refuseRights() { setenv("VANT_AUTHORIZATION", "cancel", 1); }

    NSArray *threeDownloads = @[
        entry(@"Print Driver", @"http://127.0.0.1:9/a.zip"), entry(@"Scan Driver", @"http://127.0.0.1:9/b.zip"),
        entry(@"Pressdeck", @"http://127.0.0.1:9/c.zip")
    ];
};

TEST_F(Views, TheWebViewStartsADownloadForEveryEntryInOrder) {
    [log watch:@"webDownloadStartNotification"];
    startWebView(threeDownloads);
    ASSERT_EQ([field<NSArray *>(pane, "objects") count], 3U);
    for (BDObject *row in field<NSArray *>(pane, "objects"))
        EXPECT_EQ([row getCheckBTStatus], 1);
    EXPECT_EQ(locations(), "http://127.0.0.1:9/a.zip|http://127.0.0.1:9/b.zip|http://127.0.0.1:9/c.zip");
    EXPECT_EQ(field<int>(pane, "selectedcomponentCount"), 3);
    EXPECT_EQ(text(field<NSString *>(pane, "locationstr")), "http://127.0.0.1:9/c.zip");
    EXPECT_EQ([log countOf:@"webDownloadStartNotification"], 3U);
    EXPECT_EQ([field<NSArray *>(pane, "objIndexArray") count], 3U) << "downloads announced before it was copied";
    EXPECT_FALSE([field<id>(pane, "objIndexArray") isKindOfClass:[NSMutableArray class]]);
    EXPECT_EQ([field<NSArray *>(pane, "myMutableArray") count], 0U);
}

TEST_F(Views, ARowThatIsNotTickedIsPassedOver) {
    observer = [[VantUntickingObserver alloc] init];
    startWebView(threeDownloads);
    EXPECT_EQ(locations(), "http://127.0.0.1:9/a.zip|http://127.0.0.1:9/c.zip");
    EXPECT_EQ(field<int>(pane, "selectedcomponentCount"), 2);
}

/// A row's state as the byte that it is: the compiler knows two values of BOOL, a check box has a third one.
static unsigned char stepAsState(id row, SEL) {
    return static_cast<unsigned char>([static_cast<BDObject *>(row) currentStep]);
}

TEST_F(Views, ARowInAnyOtherStateIsPassedOverToo) {
    createIdlePane();
    field<id>(pane, "selectedarrXML") = [threeDownloads retain];
    for (const char *name : {"objects", "myDownloadinfoArray"})
        field<id>(pane, name) = [[NSMutableArray alloc] init];
    method_setImplementation(class_getInstanceMethod(bundleClass(@"BDObject"), @selector(getCheckBTStatus)),
                             reinterpret_cast<IMP>(stepAsState));
    for (const int state : {1, 2, 0}) {
        [pane addRow:nil];
        [static_cast<BDObject *>([field<NSArray *>(pane, "objects") lastObject]) setNumber:state];
    }
    [pane startSelectedDownloads];
    EXPECT_EQ(locations(), "http://127.0.0.1:9/a.zip");
}

TEST_F(Views, ARowBeyondTheSelectionHasNoValues) {
    createIdlePane();
    field<id>(pane, "objects1") = [[NSMutableArray alloc] init];
    field<id>(pane, "selectedarrXML1") = [@[ entry(@"Pressdeck", @"/p.pkg") ] retain];
    [pane addRow1:nil];
    [pane addRow1:nil];
    [pane listMediaSelection];
    EXPECT_EQ(mediaRecords(), "Pressdeck@/p.pkg|(null)@(null)");
}

TEST_F(Views, TheWebViewMakesItsBookkeepingAnewAndLeavesTheMediaViewsAlone) {
    startWebView(@[]);
    for (const char *list : {"unzipcountArr", "downloadcompletedcountArr", "installedcountArr", "myDownloadinfoArray",
                             "objIndexArray", "scancounts", "selectedmodellocations", "myMutableArray"})
        EXPECT_TRUE([field<id>(pane, list) isEqual:@[]]) << list;
    EXPECT_EQ(field<id>(pane, "installedcountArr1"), nil);
}

TEST_F(Views, TheMediaViewMakesItsBookkeepingAnewAndLeavesTheWebViewsAlone) {
    startMediaView(@[]);
    for (const char *list : {"unzipcountArr", "downloadcompletedcountArr", "installedcountArr1", "myDownloadinfoArray",
                             "objIndexArray", "scancounts", "selectedmodellocations"})
        EXPECT_TRUE([field<id>(pane, list) isEqual:@[]]) << list;
    EXPECT_EQ(field<id>(pane, "installedcountArr"), nil);
    EXPECT_EQ(field<id>(pane, "myMutableArray"), nil);
}

TEST_F(Views, AnEmptyOrAbsentMediaSelectionLeavesTheUninstallerOnly) {
    for (NSArray *selection : { static_cast<NSArray *>(@[]), static_cast<NSArray *>(nil) }) {
        startMediaView(selection);
        EXPECT_EQ(mediaRecords(), uninstaller());
        EXPECT_EQ(field<int>(pane, "selectedcomponentCount"), 0);
    }
}

TEST_F(Views, AnEmptyMediaSelectionStillBringsTheManual) {
    fs::create_directories(media() / "MANUAL" / "Q200");
    writeSettings(@{@"VantWithoutConnection" : @"no", @"MODELS" : @[ @"Q1", @"Q200", @"Q200" ]});
    startMediaView(@[]);
    EXPECT_EQ(mediaRecords(), uninstaller() + "|User's Guide@" + hostResource("Manual.pkg").string());
}

TEST_F(Views, AScanDriverBringsTheSecondOneOfTheSettings) {
    writeSettings(@{@"PackagesInfo" : @{@"Scan Driver1" : @{@"LOCATION" : @"/media/Scan2.pkg"}}});
    startMediaView(@[ entry(@"Scan Driver", @"/media/Scan.pkg") ]);
    EXPECT_EQ(mediaRecords(), "Scan Driver@/media/Scan.pkg|" + uninstaller() + "|Scan Driver@/media/Scan2.pkg");
    EXPECT_EQ(field<int>(pane, "selectedcomponentCount"), 1) << "added packages are not counted";
}

TEST_F(Views, TwoScanDriversBringTheSecondOneTwiceAndWithoutSettingsItHasNoPlace) {
    startMediaView(@[ entry(@"Scan Driver", @"/1"), entry(@"Print Driver", @"/2"), entry(@"Scan Driver", @"/3") ]);
    EXPECT_EQ(mediaRecords(), "Scan Driver@/1|Print Driver@/2|Scan Driver@/3|" + uninstaller() +
                                  "|Scan Driver@(null)|Scan Driver@(null)");
    EXPECT_EQ([[mediaList() lastObject] objectForKey:@"LOCATION"], nil);
    EXPECT_EQ(locations(), "/1|/2|/3");
    EXPECT_EQ(text(field<NSString *>(pane, "locationstr")), "/3");
}

TEST_F(Views, PackagesThatTheHostLacksAreAddedWithoutAPlace) {
    fs::remove(hostResource("Uninstaller.pkg"));
    fs::remove(hostResource("Manual.pkg"));
    fs::create_directories(media() / "MANUAL" / "Q200");
    writeSettings(@{@"VantWithoutConnection" : @"no", @"MODELS" : @[ @"Q200" ]});
    startMediaView(@[]);
    EXPECT_EQ(mediaRecords(), "Printer Software Uninstaller@(null)|User's Guide@(null)");
}

TEST_F(Views, MediaEntriesOfTheWrongShapeMakeRecordsWithoutValues) {
    startMediaView(@[
        @"text", @4, @[], @{}, @{@"TYPE" : @"Scan Driver", @"LOCATION" : @"/a"},
        @{@"TYPE" : @{@"text" : @1},
          @"LOCATION" : @{@"text" : @[]}},
        entry(@"Pressdeck", @"/p.pkg")
    ]);
    EXPECT_EQ(mediaRecords(), "(null)@(null)|(null)@(null)|(null)@(null)|(null)@(null)|(null)@(null)|(null)@(null)|"
                              "Pressdeck@/p.pkg|" +
                                  uninstaller());
    EXPECT_EQ([field<NSArray *>(pane, "objects1") count], 7U);
    EXPECT_EQ(locations(), "/p.pkg");
}

TEST_F(Views, WebEntriesOfTheWrongShapeDoNotStopTheOthers) {
    startWebView(@[ @"text", @{}, @{@"LOCATION" : @{@"text" : @5}}, entry(@"Pressdeck", @"http://127.0.0.1:9/c.zip") ]);
    EXPECT_EQ([field<NSArray *>(pane, "objects") count], 4U);
    EXPECT_EQ(locations(), "http://127.0.0.1:9/c.zip");
}

TEST_F(Views, AMediaSelectionOfAHundredThousandEntriesIsTakenUp) {
    NSMutableArray *entries = [NSMutableArray array];
    for (int i = 0; i < 100000; ++i)
        [entries addObject:entry(@"Pressdeck", @"/p.pkg")];
    const double start = processSeconds();
    startMediaView(entries);
    EXPECT_EQ([mediaList() count], 100001U);
    EXPECT_LT(processSeconds() - start, 60.0);
}

TEST_F(Views, GrantedRightsAreKeptAndThePageCannotBeCancelledAnyMore) {
    startMediaView(@[]);
    EXPECT_EQ(field<int>(pane, "status"), 0);
    EXPECT_NE(field<AuthorizationRef>(pane, "authorizationRef"), nullptr);
    EXPECT_EQ(text([[observer calls] componentsJoinedByString:@" "]),
              "setIsButton2Enabled:NO setIsButton3Enabled:NO setIsButton3Hidden:YES");
    EXPECT_EQ(text([pane isPluginValid]), "YES");
}

TEST_F(Views, EveryComponentTakenUpDisablesTheSecondButtonAgain) {
    startMediaView(@[ entry(@"Pressdeck", @"/1"), entry(@"Statora", @"/2") ]);
    EXPECT_EQ([observer countOf:@"setIsButton2Enabled:NO"], 3U);
    startWebView(threeDownloads);
    EXPECT_EQ([observer countOf:@"setIsButton2Enabled:NO"], 7U);
}

TEST_F(Views, RefusedRightsMakeThePaneInvalid) {
    refuseRights();
    startMediaView(@[ entry(@"Pressdeck", @"/1") ]);
    EXPECT_NE(field<int>(pane, "status"), 0);
    EXPECT_TRUE(field<BOOL>(pane, "mAuthCancelledOrError"));
    field<BOOL>(pane, "mAuthCancelledOrError") = NO;
    ASSERT_TRUE(waitUntil([this] { return field<BOOL>(pane, "mAuthCancelledOrError") != NO; }, 2.0))
        << "the pane did not go back 0.1 seconds later";
    EXPECT_EQ(text([pane isPluginValid]), "NO");
    EXPECT_EQ(text([pane performButton3Action]), "3");
    EXPECT_EQ([mediaList() count], 0U);
    EXPECT_EQ([field<NSArray *>(pane, "objects1") count], 1U) << "rows are made before the prompt";
    EXPECT_NE(field<AuthorizationRef>(pane, "authorizationRef"), nullptr) << "the freed handle stays stored";
    EXPECT_EQ([observer countOf:@"setIsButton3Hidden:YES"], 0U);
}

TEST_F(Views, RefusedRightsLeaveTheBookkeepingEmpty) {
    refuseRights();
    createIdlePane();
    for (const char *list : {"unzipcountArr", "downloadcompletedcountArr", "installedcountArr", "installedcountArr1",
                             "myDownloadinfoArray", "objIndexArray", "scancounts"})
        field<id>(pane, list) = [[NSMutableArray alloc] initWithObjects:@"of an earlier view", nil];
    [pane showNormalView];
    [pane showNormalViewforCDInstallation];
    for (const char *list : {"unzipcountArr", "downloadcompletedcountArr", "installedcountArr", "installedcountArr1",
                             "myDownloadinfoArray", "objIndexArray", "scancounts"})
        EXPECT_TRUE([field<id>(pane, list) isEqual:@[]]) << list;
}

TEST_F(Views, RefusedRightsStartNoDownload) {
    refuseRights();
    [log watch:@"webDownloadStartNotification"];
    startWebView(threeDownloads);
    EXPECT_EQ([log countOf:@"webDownloadStartNotification"], 0U);
    EXPECT_EQ(field<id>(pane, "selectedmodellocations"), nil);
    [[NSNotificationCenter defaultCenter] postNotificationName:@"webDownloadStartNotification"
                                                        object:nil
                                                      userInfo:@{@"TEST" : @"seen"}];
    EXPECT_TRUE([field<id>(pane, "myDownloadinfoArray") isEqual:@[ @"seen" ]]) << "its handler stays in place";
}

TEST_F(Views, ClicksQueuedDuringThePromptAreDiscardedAndOtherEventsKept) {
    createIdlePane();
    for (const NSEventType type : {NSLeftMouseDown, NSLeftMouseUp, NSRightMouseDown, NSLeftMouseDown, NSLeftMouseDown})
        [NSApp postEvent:mouseEvent(type) atStart:NO];
    EXPECT_TRUE([pane obtainAdministratorRights]);
    const auto take = [](NSUInteger mask) {
        return [NSApp nextEventMatchingMask:mask
                                  untilDate:[NSDate distantPast]
                                     inMode:NSDefaultRunLoopMode
                                    dequeue:YES];
    };
    EXPECT_EQ(take(NSLeftMouseDownMask), nil);
    EXPECT_NE(take(NSLeftMouseUpMask), nil);
    EXPECT_NE(take(NSRightMouseDownMask), nil);
}

TEST_F(Views, WebRowsAreAddedWithoutReloadingAndNeverTakenAway) {
    createIdlePane();
    field<id>(pane, "objects") = [[NSMutableArray alloc] init];
    method_setImplementation(class_getInstanceMethod([NSTableView class], @selector(reloadData)),
                             reinterpret_cast<IMP>(countReload));
    [pane addRow:nil];
    [pane addRow:pane];
    [pane removeRow:nil];
    EXPECT_EQ([field<NSArray *>(pane, "objects") count], 2U);
    EXPECT_TRUE([[field<NSArray *>(pane, "objects") lastObject] isKindOfClass:bundleClass(@"BDObject")]);
    EXPECT_EQ(reloads, 0);
}

TEST_F(Views, MediaRowsReloadTheirTableAtEveryChange) {
    createIdlePane();
    ASSERT_NE(field<NSTableView *>(pane, "list1"), nil);
    field<id>(pane, "objects1") = [[NSMutableArray alloc] init];
    method_setImplementation(class_getInstanceMethod([NSTableView class], @selector(reloadData)),
                             reinterpret_cast<IMP>(countReload));
    [pane addRow1:nil];
    EXPECT_EQ(reloads, 1);
    [pane addRow1:nil];
    EXPECT_EQ(reloads, 2);
    EXPECT_EQ([field<NSArray *>(pane, "objects1") count], 2U);
}

TEST_F(Views, RemovingAMediaRowNeedsASelectedOne) {
    createIdlePane();
    field<id>(pane, "objects1") = [[NSMutableArray alloc] init];
    [pane addRow1:nil];
    [pane addRow1:nil];
    id second = [field<NSArray *>(pane, "objects1") lastObject];
    NSTableView *table = field<NSTableView *>(pane, "list1");
    [table deselectAll:nil];
    EXPECT_EQ(nameOfExceptionFrom(pane, @selector(removeRow1:)), "NSRangeException") << "the index is -1";
    EXPECT_EQ([field<NSArray *>(pane, "objects1") count], 2U);
    [table selectRowIndexes:[NSIndexSet indexSetWithIndex:0] byExtendingSelection:NO];
    ASSERT_EQ([table selectedRow], 0);
    method_setImplementation(class_getInstanceMethod([NSTableView class], @selector(reloadData)),
                             reinterpret_cast<IMP>(countReload));
    [pane removeRow1:nil];
    EXPECT_EQ(reloads, 1) << "the table shows a row that has gone";
    EXPECT_EQ([field<NSArray *>(pane, "objects1") count], 1U);
    EXPECT_EQ([field<NSArray *>(pane, "objects1") lastObject], second);
}

TEST_F(Views, GoingBackMarksThePaneInvalid) {
    createIdlePane();
    [pane showBackPaneView];
    EXPECT_EQ(text([pane isPluginValid]), "NO");
}

TEST_F(Views, TheAbnormalViewDisablesTheSecondButton) {
    createIdlePane();
    [pane showAbnormalView];
    EXPECT_EQ(text([[observer calls] componentsJoinedByString:@" "]), "setIsButton2Enabled:NO");
}

TEST_F(Views, TheHandlerThatNobodyCallsDoesNothing) {
    startWebView(@[]);
    const NSUInteger calls = [[observer calls] count];
    [[NSNotificationCenter defaultCenter] postNotificationName:@"FindInstallFile" object:nil];
    EXPECT_EQ([[observer calls] count], calls);
}
