#import "download/VantInstallation+Downloads.h"
#import "install/chain/VantInstallation+InstallChain.h"
#import "install/status/VantInstallation+RunEvents.h"
#import "ui/VantComponentTable.h"
#import "ui/VantInstallation+AdministratorRights.h"
#import "ui/VantInstallation+Rows.h"
#import "WebTest.h"

#include "Jail.hpp"
#include "ProcessorTime.hpp"

using namespace vant::test;

/// The component table in a window, its rows of the test's own, and a pane that may install. What a person sees of a
/// row is read from its indicators and from what stands in the spinner's column.
class RowStates : public WebTest {
protected:
    RowStates() {
        table = field<NSTableView *>(pane, "list1");
        window = [[NSWindow alloc] initWithContentRect:NSMakeRect(50, 50, 620, 420)
                                             styleMask:NSTitledWindowMask
                                               backing:NSBackingStoreBuffered
                                                 defer:NO];
        [window setContentView:[pane contentView]];
        [window orderFront:nil];
        // The chain is the test's to drive.
        for (NSString *name in
             @[ @"InstallNextSUComponent", @"SUInstallComplete", @"InstallNextCDComponent", @"CDInstallComplete" ])
            [[NSNotificationCenter defaultCenter] removeObserver:pane name:name object:nil];
    }

    void showMedia(NSUInteger count) {
        show("objects1", "selectedarrXML1", @"/media/%lu.pkg", count);
        for (NSUInteger i = 0; i < count; ++i)
            addMedia(@"Kind", [NSString stringWithFormat:@"/media/%lu.pkg", static_cast<unsigned long>(i)]);
    }

    void showWeb(NSUInteger count) { show("objects", "selectedarrXML", webAddresses, count); }

    void losesFirstDownload() {
        NSURLRequest *request = [NSURLRequest requestWithURL:[NSURL URLWithString:@"http://127.0.0.1:1/0.zip"]];
        [pane runHasLostDownload:[[NSURLDownload alloc] initWithRequest:request delegate:nil]];
    }

    void show(const char *rowField, const char *entryField, NSString *format, NSUInteger count) {
        make(rowField, entryField, format, count);
        [table reloadData];
        ASSERT_TRUE(waitUntil([&] { return count == 0 || [[[rows lastObject] continuousProgress] isHidden]; }, 10));
    }

    void make(const char *rowField, const char *entryField, NSString *format, NSUInteger count) {
        NSMutableArray *made = [[NSMutableArray alloc] init];
        NSMutableArray *described = [[NSMutableArray alloc] init];
        for (NSUInteger i = 0; i < count; ++i) {
            [made addObject:[[[bundleClass(@"BDObject") alloc] init] autorelease]];
            [described addObject:entry(@"Kind", [NSString stringWithFormat:format, static_cast<unsigned long>(i)])];
        }
        field<id>(pane, rowField) = rows = made;
        field<id>(pane, entryField) = described;
    }

    BDObject *row(NSUInteger index) { return [rows objectAtIndex:index]; }

    /// One letter a row: W waiting, > at work, A arrived, D done, ! not done, - not needed; ? for what agrees with none
    /// of them.
    std::string seen() {
        std::string letters;
        for (NSUInteger i = 0; i < [rows count]; ++i)
            letters += letterOf(i);
        return letters;
    }

    char letterOf(NSUInteger index) {
        const bool turns = ![[row(index) continuousProgress] isHidden];
        const bool full = [[row(index) discreteProgress] doubleValue] > 98;
        const bool empty = [[row(index) discreteProgress] doubleValue] == 0;
        const std::string mark = text([[table dataSource] tableView:table
                                          objectValueForTableColumn:[table tableColumnWithIdentifier:@"spinner"]
                                                                row:static_cast<NSInteger>(index)]);
        if (mark == "✓")
            return full && !turns ? 'D' : '?';
        if (mark == "–")
            return empty && !turns ? '-' : '?';
        if (!mark.empty())
            return empty && !turns ? '!' : '?';
        if (turns)
            return '>';
        return full ? 'A' : 'W';
    }

    bool comesToShow(const std::string &states, double seconds = 20) {
        const bool came = waitUntil([&] { return seen() == states; }, seconds);
        EXPECT_EQ(seen(), states);
        return came;
    }

    static void post(NSString *name, NSDictionary *info = nil, id object = nil) {
        [[NSNotificationCenter defaultCenter] postNotificationName:name object:object userInfo:info];
    }

    void created(int index) {
        post(@"downloadinfoo", @{@"Path" : [NSString stringWithFormat:@"/tmp/%d.zip", index], @"Download" : pane});
    }

    /// A folder that an archive expanded into, with these items.
    void expanded(int index, const std::vector<std::string> &items) {
        post(@"unzipcompleted", @{@"path" : ns(expandedFolder(std::to_string(index), items)), @"BDObject" : pane});
    }

    /// The run has gone on to the package at a position.
    static void goOn(NSString *name, int position) {
        processCounter("cdInstallIndex") = position;
        post(name, nil, @{});
    }

    static constexpr NSString *webAddresses = @"http://127.0.0.1:1/%lu.zip";

    NSArray *rows = nil;
    NSTableView *table;
    NSWindow *window;
};

TEST_F(RowStates, WaitBeforeTheRunWithoutASpinnerOrAMark) {
    showMedia(3);
    comesToShow("WWW");
}

TEST_F(RowStates, AMediaRunWorksOnOneRowAtATimeAndEndsWithAllDone) {
    showMedia(3);
    setInstaller("while [ ! -e '" + (scratch / "go").string() +
                 "' ]; do sleep 0.05; done\n"
                 "rm '" +
                 (scratch / "go").string() + "'\necho 'installer:%100.000000'\n");
    followTheChain();
    [pane InstallCDComponents:nil];
    for (const char *states : {">WW", "D>W", "DD>", "DDD"}) {
        ASSERT_TRUE(comesToShow(states));
        writeFile(scratch / "go", "");
    }
}

TEST_F(RowStates, AnInstallerThatCannotBeStartedLeavesAllQuietAndNotDone) {
    showMedia(2);
    removeInstaller();
    [pane InstallCDComponents:nil];
    comesToShow("!!");
}

TEST_F(RowStates, APackageThatFailedIsNotDoneWhenTheRunEnds) {
    showMedia(2);
    [pane runWillInstall];
    ASSERT_TRUE(comesToShow(">W"));
    [outcomes setObject:@"Failed" forKey:@"0.pkg"];
    goOn(@"InstallNextCDComponent", 1);
    ASSERT_TRUE(comesToShow("!>"));
    [outcomes setObject:@"PIPE END" forKey:@"1.pkg"];
    post(@"FindInstallFile3");
    comesToShow("!D");
}

TEST_F(RowStates, ARefusalLeavesAllQuietAndNotDone) {
    setenv("VANT_AUTHORIZATION", "deny", 1);
    writeMediaSelection(@[ entry(@"Print Driver", @"/media/0.pkg"), entry(@"Scan Driver", @"/media/1.pkg") ]);
    createPane();
    table = field<NSTableView *>(pane, "list1");
    rows = field<NSArray *>(pane, "objects1");
    comesToShow("!!");
}

TEST_F(RowStates, TheDownloadBegunFirstIsAtWorkAndArrivesWhole) {
    showWeb(3);
    created(1);
    created(0);
    ASSERT_TRUE(comesToShow("W>W"));
    expanded(1, {"Printer Driver.pkg"});
    ASSERT_TRUE(comesToShow(">AW"));
    created(2);
    expanded(0, {"Fax.pkg"});
    comesToShow("AA>");
}

TEST_F(RowStates, WhatExpandsIntoNothingIsNotDone) {
    showWeb(2);
    created(0);
    created(1);
    post(@"unzipcompleted", @{@"path" : ns(downloads() / "0"), @"BDObject" : pane});
    ASSERT_TRUE(comesToShow("!>"));
    expanded(1, {});
    comesToShow("!!");
}

TEST_F(RowStates, ADownloadThatFailedIsNotDoneAndTheNextIsAtWork) {
    showWeb(2);
    created(0);
    created(1);
    losesFirstDownload();
    comesToShow("!>");
}

// An address of a kind that nobody can fetch fails at once, while the pane is being created.
TEST_F(RowStates, WhatHappensBeforeTheTableIsDrawnIsShownAllTheSame) {
    [NSObject cancelPreviousPerformRequestsWithTarget:table];
    make("objects", "selectedarrXML", webAddresses, 3);
    losesFirstDownload();
    created(1);
    created(2);
    expanded(1, {"Printer Driver.pkg"});
    bool known = false;
    [field<VantComponentTable *>(pane, "componentTable") change:[&](vant::TableRows &) { known = true; }];
    ASSERT_TRUE(waitUntil([&] { return known; }));
    [table reloadData];
    comesToShow("!A>");
}

TEST_F(RowStates, AWebRunEndsWithWhatWasInstalledDoneAndAllElseNotDone) {
    showWeb(3);
    for (int index : {0, 1, 2})
        created(index);
    expanded(0, {"Printer Driver.pkg"});
    post(@"unzipcompleted", @{@"path" : ns(downloads() / "1"), @"BDObject" : pane});
    ASSERT_TRUE(comesToShow("A!>"));
    [pane runWillInstall];
    ASSERT_TRUE(comesToShow(">!W"));
    [outcomes setObject:@"PIPE END" forKey:@"Printer Driver.pkg"];
    post(@"SUInstallComplete");
    comesToShow("D!!");
}

TEST_F(RowStates, AnArchiveWhosePackagesAreLeftOutForOthersIsNotNeeded) {
    showWeb(2);
    created(0);
    created(1);
    expanded(0, {"Printer Driver.pkg"});
    expanded(1, {"Printer Driver.pkg"});
    ASSERT_TRUE(comesToShow("AA"));
    [webList removeObjectAtIndex:1];
    [pane runWillInstall];
    ASSERT_TRUE(comesToShow(">-"));
    post(@"SUInstallComplete");
    comesToShow("D-");
}

TEST_F(RowStates, WhatTheMediaHasStandsInForArchivesThatNeverCame) {
    showWeb(2);
    addWeb(@"Kind", @"/media/Kind.pkg");
    addWeb(@"Printer Software Uninstaller", @"/media/Uninstaller.pkg");
    [pane runWillInstall];
    ASSERT_TRUE(comesToShow(">W"));
    goOn(@"InstallNextSUComponent", 1);
    ASSERT_TRUE(comesToShow("DD"));
    post(@"SUInstallComplete");
    comesToShow("DD");
}

TEST_F(RowStates, ARowOfTwoPackagesIsDoneWithBoth) {
    showWeb(2);
    addWeb(@"Fax.pkg", ns(downloads() / "0/Fax.pkg"));
    addWeb(@"Scanmate.pkg", ns(downloads() / "1/Scanmate.pkg"));
    addWeb(@"Scanwick.pkg", ns(downloads() / "0/Sub/Scanwick.pkg"));
    [pane runWillInstall];
    ASSERT_TRUE(comesToShow(">W"));
    goOn(@"InstallNextSUComponent", 1);
    ASSERT_TRUE(comesToShow("W>"));
    goOn(@"InstallNextSUComponent", 2);
    ASSERT_TRUE(comesToShow(">D"));
    post(@"SUInstallComplete");
    comesToShow("DD");
}

TEST_F(RowStates, DownloadsThatWereSetAsideAreNotDone) {
    showWeb(1);
    created(0);
    expanded(0, {"Unknown.pkg"});
    comesToShow("!");
}

TEST_F(RowStates, TheRowAtWorkComesIntoSight) {
    showMedia(200);
    [pane runWillInstall];
    ASSERT_TRUE(waitUntil([&] { return letterOf(0) == '>'; }));
    goOn(@"InstallNextCDComponent", 150);
    EXPECT_TRUE(waitUntil([&] { return NSLocationInRange(150, [table rowsInRect:[table visibleRect]]); }));
    EXPECT_TRUE(waitUntil([&] { return letterOf(150) == '>'; }));
}

TEST_F(RowStates, AScrolledTableStaysWhereThePersonHasPutIt) {
    showMedia(200);
    [table scrollRowToVisible:100];
    const NSRect before = [table visibleRect];
    [pane runWillInstall];
    goOn(@"InstallNextCDComponent", 150);
    ASSERT_TRUE(waitUntil([&] { return letterOf(149) == 'D'; }));
    EXPECT_TRUE(NSEqualRects([table visibleRect], before));
}

TEST_F(RowStates, ASpinnerTurnsInSightOnly) {
    showMedia(200);
    [table scrollRowToVisible:100];
    [pane runWillInstall];
    goOn(@"InstallNextCDComponent", 1);
    ASSERT_TRUE(waitUntil([&] { return letterOf(0) == 'D'; }));
    EXPECT_TRUE([[row(1) continuousProgress] isHidden]);
    [table scrollRowToVisible:0];
    EXPECT_FALSE([[row(1) continuousProgress] isHidden]);
    [table scrollRowToVisible:199];
    EXPECT_TRUE([[row(1) continuousProgress] isHidden]);
}

/// CPU time of this thread: what other processes take meanwhile is no cost of the table.
/// The most that the table's rows may cost for one ended package, in seconds.
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
static constexpr double longestForPackage = 0.030; // each access costs several times as much
#else
static constexpr double longestForPackage = 0.003;
#endif

TEST_F(RowStates, APackageCostsTheSameHoweverManyRowsThereAre) {
    const auto secondsOf = [&](NSUInteger count) {
        showMedia(count);
        [pane runWillInstall];
        EXPECT_TRUE(waitUntil([&] { return letterOf(0) == '>'; }));
        const double before = threadSeconds();
        for (int position = 1; position <= 40; ++position)
            goOn(@"InstallNextCDComponent", position);
        EXPECT_TRUE(waitUntil([&] { return letterOf(39) == 'D'; }));
        const double seconds = threadSeconds() - before;
        std::printf("%lu rows: %.2f ms a package\n", static_cast<unsigned long>(count), seconds * 25);
        return seconds;
    };
    secondsOf(41);
    [mediaList removeAllObjects];
    processCounter("cdInstallIndex") = 0;
    EXPECT_LT(secondsOf(4000), 40 * longestForPackage);
}

/// What becomes of the table once the host lets the pane go, after a person has touched a slide: no timer holds the
/// pane any more.
class RowLifetime : public RowStates {
protected:
    /// Works with a pane of its own, which nothing but the test holds afterwards.
    void withPane(const std::function<void()> &work) {
        @autoreleasepool {
            createIdlePane();
            for (const char *list : {"mInstallCompArrayForCDUpdate", "mInstalledPackageDict"})
                field<id>(pane, list) = [field<id>(pane, list) mutableCopy];
            mediaList = field<NSMutableArray *>(pane, "mInstallCompArrayForCDUpdate");
            table = field<NSTableView *>(pane, "list1");
            [window setContentView:[pane contentView]];
            work();
        }
    }

    void startRun() {
        showMedia(3);
        [pane runWillInstall];
        ASSERT_TRUE(comesToShow(">WW"));
    }

    void releasePane() {
        static bool destroyed;
        static Method method = class_getInstanceMethod(paneClass(), @selector(dealloc));
        static IMP original = method_getImplementation(method);
        method_setImplementation(method, reinterpret_cast<IMP>(+[](id self, SEL operation) {
                                     destroyed = true;
                                     reinterpret_cast<void (*)(id, SEL)>(original)(self, operation);
                                 }));
        destroyed = false;
        @autoreleasepool {
            [pane release];
        }
        ASSERT_TRUE(waitUntil([] { return destroyed; }));
    }
};

TEST_F(RowLifetime, ATableOutlivesItsPaneAndIsDrawnAsItWas) {
    withPane([&] { startRun(); });
    releasePane();
    [table reloadData];
    [table display];
    EXPECT_EQ([table numberOfRows], 3);
    EXPECT_EQ(seen(), ">WW");
}

TEST_F(RowLifetime, WhatIsUnderWayToATableArrivesWithoutItsPane) {
    withPane([&] {
        showMedia(3);
        [pane runWillInstall];
    });
    releasePane();
    comesToShow(">WW");
}

TEST_F(RowLifetime, WhatAnotherPaneAnnouncesDoesNotReachATableWhosePaneHasGone) {
    withPane([&] { startRun(); });
    releasePane();
    goOn(@"InstallNextCDComponent", 1);
    post(@"CDInstallComplete");
    post(@"downloadinfoo", @{@"Path" : @"/tmp/1.zip"});
    EXPECT_FALSE(waitUntil([&] { return seen() != ">WW"; }, 1));
}
