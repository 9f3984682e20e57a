#import "download/VantInstallation+WebDriver.h"
#import "install/chain/VantInstallation+InstallChain.h"

#import "WebTest.h"

#include "Jail.hpp"
#include <thread>

using namespace vant::test;
namespace fs = std::filesystem;

class WebDriver : public WebTest {
protected:
    /// An installer that writes down the path of each package, one a line.
    void recordPackages() {
        setInstaller("printf '%s\\n' \"$3\" >> '" + (scratch / "packages").string() + "'\necho 'installer:%50.0'\n");
    }
    std::string packages() { return contentsOf(scratch / "packages"); }
    bool completes() {
        return waitUntil([&] { return [log countOf:@"SUInstallComplete"] > 0; }, 30.0);
    }
    void created(const fs::path &path) { [pane download:nil didCreateDestination:ns(path)]; }
    void finished() { [pane downloadDidFinish:idleDownload()]; }
    void post(NSString *name, id object = nil) {
        [[NSNotificationCenter defaultCenter] postNotificationName:name object:object];
    }

    /// Writes down the commands that archives are expanded with, instead of running them.
    void recordExpansions() {
        static std::vector<std::string> *commands;
        commands = &expansions;
        struct Recorder {
            static void note(id, SEL, NSString *command) { commands->push_back(text(command)); }
        };
        method_setImplementation(class_getInstanceMethod(paneClass(), NSSelectorFromString(@"taskForShellCommand:")),
                                 reinterpret_cast<IMP>(&Recorder::note));
    }

    std::vector<std::string> expansions;
};

// Starting

TEST_F(WebDriver, StartingSetsTheSharedFieldsAndTheRequest) {
    [pane webDriverDownloading:@"http://127.0.0.1:1/path/Printer%20Driver.zip?v=1"];
    NSURLDownload *download = field<NSURLDownload *>(pane, "filedownload");
    ASSERT_NE(download, nil);
    EXPECT_EQ(text(field<NSString *>(pane, "ulrList")), "http://127.0.0.1:1/path/Printer%20Driver.zip?v=1");
    EXPECT_EQ(text(field<NSString *>(pane, "sFilePath")), (downloads() / "Printer%20Driver.zip?v=1").string());
    EXPECT_TRUE(fs::is_directory(downloads()));
    NSURLRequest *request = [download request];
    EXPECT_EQ([request timeoutInterval], 60.0);
    EXPECT_EQ([request cachePolicy], NSURLRequestUseProtocolCachePolicy);
    EXPECT_EQ(text([request valueForHTTPHeaderField:@"User-Agent"]),
              "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_6_8) AppleWebKit/534.57.2 (KHTML, like Gecko) "
              "Version/5.1.7 Safari/534.57.2");
    EXPECT_EQ(text([request valueForHTTPHeaderField:@"Accept"]),
              "text/html,application/xhtml+xml,application/xml;q=0.9,*/*;q=0.8");
    [download cancel];
}

TEST_F(WebDriver, StartingIsAnnouncedWithThePaneUnderTest) {
    [log watch:@"webDownloadStartNotification"];
    [pane webDriverDownloading:@"http://127.0.0.1:1/a.zip"];
    [field<NSURLDownload *>(pane, "filedownload") cancel];
    ASSERT_EQ([[log notifications] count], 1U);
    NSNotification *posted = [[log notifications] lastObject];
    EXPECT_EQ([posted object], nil);
    EXPECT_TRUE([[posted userInfo] isEqual:@{@"TEST" : pane}]);
    EXPECT_EQ(field<NSDictionary *>(pane, "downloadindexDic"), [posted userInfo]);
    EXPECT_EQ([field<NSArray *>(pane, "myDownloadinfoArray") count], 1U);
    EXPECT_EQ([field<NSArray *>(pane, "myDownloadinfoArray") lastObject], pane);
    EXPECT_EQ(field<id>(pane, "TestArray"), nil);
}

TEST_F(WebDriver, TheStartIsAnnouncedBeforeTheDestinationIsSet) {
    struct Listener {
        static void direct(id self, SEL, NSNotification *) {
            [field<NSURLDownload *>(self, "filedownload") setDestination:ns(temporary("elsewhere")) allowOverwrite:YES];
        }
    };
    method_setImplementation(class_getInstanceMethod(paneClass(), @selector(ReNotification:)),
                             reinterpret_cast<IMP>(&Listener::direct));
    [log watch:@"downloadinfoo"];
    writeFile(scratch / "a.zip", "an archive");
    [pane webDriverDownloading:ns("file://" + (scratch / "a.zip").string())];
    ASSERT_TRUE(waitUntil([&] { return [log countOf:@"downloadinfoo"] > 0; }));
    // A download keeps the first destination that it is given.
    EXPECT_EQ(text([[[[log notifications] objectAtIndex:0] userInfo] objectForKey:@"Path"]),
              temporary("elsewhere").string());
}

TEST_F(WebDriver, OnlyTheStartNotificationIsNoted) {
    [pane ReNotification:[NSNotification notificationWithName:@"another" object:nil userInfo:@{@"TEST" : pane}]];
    [pane ReNotification:[NSNotification notificationWithName:@"webDownloadStartNotification" object:nil]];
    EXPECT_EQ([field<NSArray *>(pane, "myDownloadinfoArray") count], 0U);
}

// Created and finished

TEST_F(WebDriver, ACreatedFileShowsTheDownloadBarAndTheStatus) {
    [dummyBar setHidden:NO];
    [downloadBar setHidden:YES];
    created(downloads() / "a.zip");
    EXPECT_TRUE([dummyBar isHidden]);
    EXPECT_FALSE([downloadBar isHidden]);
    EXPECT_EQ(statusText(), text([pane localizedStringForKey:@"Downloading"]) + "...");
    EXPECT_EQ([field<NSArray *>(pane, "myMutableArray") count], 1U);
}

TEST_F(WebDriver, AFinishedArchiveIsExpandedByItsExtension) {
    struct Row {
        std::string archive;
        std::string option;
        std::string folder;
    };
    const Row rows[] = {
        {"Driver One.zip", "-xk", "Driver One"},
        {"Fax.ZIP", "-x", "Fax"},
        {"Tool.cpio.gz", "-x", "Tool.cpio"},
        {"plain", "-x", "plain"},
        {"a.zip?x=1", "-x", "a"},
        {"b.zip", "-xk", "b"},
    };
    recordExpansions();
    select(100);
    [log watch:@"unzipcompleted"];
    for (const Row &row : rows) {
        created(downloads() / row.archive);
        finished();
        const std::string archive = (downloads() / row.archive).string();
        const std::string folder = (downloads() / row.folder).string();
        EXPECT_EQ(expansions.back(), "ditto " + row.option + " \"" + archive + "\" \"" + folder + "\"");
        NSDictionary *info = [[[log notifications] lastObject] userInfo];
        EXPECT_TRUE([info isEqual:(@{@"path" : ns(folder), @"BDObject" : pane})]) << row.archive;
    }
    EXPECT_EQ(processCounter("cdDownloadIndex"), 6);
}

TEST_F(WebDriver, ArchivesAreExpandedInTheOrderOfCreationWhicheverFinished) {
    recordExpansions();
    select(3);
    created(downloads() / "first.zip");
    created(downloads() / "second.zip");
    finished();
    finished();
    ASSERT_EQ(expansions.size(), 2U);
    EXPECT_NE(expansions[0].find("first.zip"), std::string::npos);
    EXPECT_NE(expansions[1].find("second.zip"), std::string::npos);
    EXPECT_EQ([field<NSArray *>(pane, "downloadcompletedcountArr") count], 2U);
    EXPECT_EQ(text([field<NSArray *>(pane, "downloadcompletedcountArr") lastObject]), "downloadcompleted");
}

TEST_F(WebDriver, AFinishThatIsNotTheEntrysDelegateIsCountedOnly) {
    recordExpansions();
    created(downloads() / "a.zip");
    [[NSNotificationCenter defaultCenter] postNotificationName:@"downloadcompleted"
                                                        object:nil
                                                      userInfo:@{@"Download" : @"somebody else"}];
    EXPECT_EQ(expansions.size(), 0U);
    EXPECT_EQ(processCounter("cdDownloadIndex"), 0);
    EXPECT_EQ([field<NSArray *>(pane, "downloadcompletedcountArr") count], 1U);
}

TEST_F(WebDriver, AFinishWithoutACreatedFileIsCountedOnly) {
    recordExpansions();
    finished();
    post(@"downloadcompleted");
    EXPECT_EQ(expansions.size(), 0U);
    EXPECT_EQ(processCounter("cdDownloadIndex"), 0);
}

TEST_F(WebDriver, AnEntryWithoutAPathIsCountedButNotExpanded) {
    recordExpansions();
    countInstead(@selector(InstallWebComponents:));
    created(fs::path());
    field<id>(pane, "myMutableArray") = [[NSMutableArray alloc] initWithObjects:@{@"Download" : pane}, nil];
    finished();
    EXPECT_EQ(expansions.size(), 0U);
    EXPECT_EQ([field<NSArray *>(pane, "unzipcountArr") count], 1U);
}

TEST_F(WebDriver, TheFinishIsTracedWithoutAName) {
    finished();
    EXPECT_EQ(tracedCount("Download complete...:[]"), 1);
}

// Merge, order, start

TEST_F(WebDriver, AMediaPackageThatTheWebHasIsDropped) {
    recordPackages();
    addWeb(@"Printer Driver.pkg", @"/web/Printer Driver.pkg");
    addWeb(@"x", @"/web/Uninstaller.pkg");
    writeMediaSelection(@[ entry(@"Print Driver", @"/media/Printer Driver.pkg") ]);
    [pane InstallWebComponents:nil];
    ASSERT_TRUE(completes());
    EXPECT_EQ(packages(), "/web/Printer Driver.pkg\n/web/Uninstaller.pkg\n");
}

TEST_F(WebDriver, TheMergedListIsOrderedFilteredAndEndsWithTheUninstaller) {
    recordPackages();
    writeSettings(@{@"PackagesInfo" : @{@"Scan Driver1" : @{@"LOCATION" : @"/media/Second Scan.pkg"}}});
    addWeb(@"Scan Manager.pkg", @"/web/Scan Manager.pkg");
    addWeb(@"Fax.pkg", @"/web/Fax.pkg");
    addWeb(@"Fax.pkg", @"/web/Fax.pkg");
    addWeb(@"Scanmate.pkg", @"/web/Scanmate.pkg");
    writeMediaSelection(@[
        entry(@"Print Driver", @"/media/Printer.pkg"), entry(@"Scan Driver", @"/media/Scan.pkg"),
        entry(@"PC fax Utility", @"/media/Fax.pkg")
    ]);
    [pane InstallWebComponents:nil];
    ASSERT_TRUE(completes());
    const std::string uninstaller = hostResource("Uninstaller.pkg").string();
    EXPECT_EQ(packages(),
              "/media/Printer.pkg\n/media/Scan.pkg\n/media/Second Scan.pkg\n/web/Fax.pkg\n" + uninstaller + "\n");
    NSDictionary *last = [webList lastObject];
    EXPECT_EQ(text([last objectForKey:@"componentname"]), "Printer Software Uninstaller");
    EXPECT_EQ(text([last objectForKey:@"BDObject"]), "Uninstaller");
    EXPECT_EQ(tracedCount("Installing start for WEB Data ===>:[("), 1);
}

TEST_F(WebDriver, OfTwoMediaPackagesOfOneNameTheLaterIsAdded) {
    recordPackages();
    writeMediaSelection(@[
        entry(@"Print Driver", @"/one/A.pkg"), entry(@"Pressdeck", @"/two/A.pkg"),
        entry(@"Printer Software Uninstaller", @"/media/Uninstaller.pkg")
    ]);
    [pane InstallWebComponents:nil];
    ASSERT_TRUE(completes());
    EXPECT_EQ(packages(), "/two/A.pkg\n/media/Uninstaller.pkg\n");
}

TEST_F(WebDriver, AListWithAnUninstallerGetsNoSecondOne) {
    countInstead(NSSelectorFromString(@"installCompoentAtPath:"));
    addWeb(@"whatever", @"/web/Uninstaller.pkg");
    [pane InstallWebComponents:nil];
    EXPECT_EQ(listedPaths(), (std::vector<std::string>{"/web/Uninstaller.pkg"}));
    EXPECT_TRUE(waitUntil([] { return counted() == 1; }));
}

TEST_F(WebDriver, AnEmptyMergedListStartsNothing) {
    countInstead(NSSelectorFromString(@"installCompoentAtPath:"));
    [pane InstallWebComponents:nil];
    EXPECT_FALSE(waitUntil([] { return counted() > 0; }, 0.5));
    EXPECT_EQ([[log names] count], 0U);
    EXPECT_EQ(listedPaths().size(), 0U);
    EXPECT_EQ(trace(), "");
}

TEST_F(WebDriver, ABadMediaSelectionCountsAsAbsentPieceByPiece) {
    countInstead(NSSelectorFromString(@"installCompoentAtPath:"));
    writeMediaSelection(@[
        @"a string", @{}, @{@"LOCATION" : @"bare"},
        @{@"LOCATION" : @{@"text" : @[ @"list" ]}}, entry(@"Print Driver", @"/media/Printer.pkg")
    ]);
    [pane InstallWebComponents:nil];
    EXPECT_EQ(listedPaths(), (std::vector<std::string>{"/media/Printer.pkg", "-", "-", "-", "-",
                                                       hostResource("Uninstaller.pkg").string()}));
    EXPECT_TRUE(waitUntil([] { return counted() == 1; }));
}

TEST_F(WebDriver, AMediaSelectionThatIsNoListAddsNothing) {
    countInstead(NSSelectorFromString(@"installCompoentAtPath:"));
    writeMediaSelection(@{@"LOCATION" : @{@"text" : @"/x.pkg"}});
    [pane InstallWebComponents:nil];
    EXPECT_EQ(listedPaths().size(), 0U);
}

TEST_F(WebDriver, TheFirstPackageIsTheOneAtTheProcessesPosition) {
    recordPackages();
    addWeb(@"a", @"/web/A.pkg");
    addWeb(@"b", @"/web/Uninstaller.pkg");
    processCounter("cdInstallIndex") = 1;
    [outcomes setObject:@"PIPE END" forKey:@"earlier"];
    [pane InstallWebComponents:nil];
    ASSERT_TRUE(completes());
    EXPECT_EQ(packages(), "/web/Uninstaller.pkg\n");
}

TEST_F(WebDriver, TheFirstPackageStartsOnAThreadOfItsOwn) {
    addWeb(@"a", @"/web/Uninstaller.pkg");
    [pane InstallWebComponents:nil];
    ASSERT_TRUE(completes());
    ASSERT_EQ([[log threads] count], 1U);
    EXPECT_NE([[log threads] lastObject], [NSThread mainThread]);
}

TEST_F(WebDriver, AnotherNotificationIsNeitherAFileNorAFinish) {
    [pane receivedownloadNotification:[NSNotification notificationWithName:@"another" object:nil]];
    EXPECT_EQ([field<NSArray *>(pane, "myMutableArray") count], 0U);
    EXPECT_EQ([field<NSArray *>(pane, "downloadcompletedcountArr") count], 0U);
}

// Next and finish

TEST_F(WebDriver, TheNextPackageStartsOnAThreadOfItsOwn) {
    recordPackages();
    addWeb(@"a", @"/web/A.pkg");
    post(@"InstallNextSUComponent", [webList objectAtIndex:0]);
    ASSERT_TRUE(completes());
    EXPECT_EQ(packages(), "/web/A.pkg\n");
    EXPECT_NE([[log threads] lastObject], [NSThread mainThread]);
}

TEST_F(WebDriver, CompletionEnablesTheButtonShowsTheTextAndGoesOn) {
    [[observer strings] setObject:@"All done" forKey:@"FINISH.TITLE"];
    for (NSString *name in @[ @"SUInstallComplete", @"CDInstallComplete" ]) {
        [statusLine setStringValue:@"before"];
        const NSUInteger before = [[observer calls] count];
        post(name);
        EXPECT_EQ(statusText(), "All done") << text(name);
        NSArray *calls = [[observer calls] subarrayWithRange:NSMakeRange(before, [[observer calls] count] - before)];
        EXPECT_TRUE([calls isEqual:(@[ @"setIsButton2Enabled:YES", @"continueToNextPlugin" ])]) << text(calls);
    }
}

TEST_F(WebDriver, CompletionOnAnInstallerThreadShowsItsTextFromTheMainOne) {
    [[observer strings] setObject:@"All done" forKey:@"FINISH.TITLE"];
    [statusLine setStringValue:@"before"];
    std::thread([&] {
        @autoreleasepool {
            post(@"SUInstallComplete");
        }
    }).join();
    EXPECT_EQ([observer countOf:@"continueToNextPlugin"], 1U);
    EXPECT_EQ(statusText(), "before");
    EXPECT_TRUE(waitUntil([&] { return statusText() == "All done"; }));
}

TEST_F(WebDriver, CompletionStopsTheInstallationBarAlone) {
    for (NSString *name in @[ @"SUInstallComplete", @"CDInstallComplete" ])
        post(name);
    EXPECT_TRUE([[bar calls] isEqual:(@[ @"stop", @"stop" ])]) << text([bar calls]);
    EXPECT_EQ([[downloadBar calls] count], 0U);
}

TEST_F(WebDriver, AnObserverThatCannotGoOnIsNotAskedTo) {
    field<id>(pane, "mObserver") = nil;
    post(@"SUInstallComplete");
    EXPECT_EQ(statusText(), "");
}

TEST_F(WebDriver, AFailedMediaRunFinishesNothing) {
    [statusLine setStringValue:@"as it was"];
    post(@"FindInstallFile3");
    EXPECT_EQ(statusText(), "as it was");
    EXPECT_EQ([observer countOf:@"continueToNextPlugin"], 0U);
}
