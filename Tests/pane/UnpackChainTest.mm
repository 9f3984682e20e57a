#import "install/chain/VantInstallation+UnpackChain.h"

#import "download/VantInstallation+WebDriver.h"
#import "WebTest.h"

#include "Jail.hpp"

using namespace vant::test;
namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

class UnpackChain : public WebTest {
protected:
    UnpackChain() { countInstead(@selector(InstallWebComponents:)); }

    int counter(const char *name) { return field<int>(pane, name); }
    static std::size_t items(const fs::path &folder) {
        return static_cast<std::size_t>(
            std::distance(fs::recursive_directory_iterator(folder), fs::recursive_directory_iterator()));
    }
    /// A desktop folder that is opened is not really opened.
    void openNothing() {
        struct Opener {
            static BOOL open(id, SEL, NSString *path) {
                opened().push_back(text(path));
                return YES;
            }
        };
        method_setImplementation(class_getInstanceMethod([NSWorkspace class], @selector(openFile:)),
                                 reinterpret_cast<IMP>(&Opener::open));
    }
    static Texts &opened() {
        static Texts paths;
        return paths;
    }
};

TEST_F(UnpackChain, AnyOtherNotificationIsIgnored) {
    field<int>(pane, "copyflag") = 1;
    [pane receiveunzipNotification:[NSNotification notificationWithName:@"another"
                                                                 object:nil
                                                               userInfo:@{@"path" : @"/tmp"}]];
    EXPECT_EQ(counter("copyflag"), 1);
    EXPECT_EQ([field<NSArray *>(pane, "unzipcountArr") count], 0U);
}

TEST_F(UnpackChain, EveryKnownPackageBecomesARecord) {
    select(100);
    const Texts known = {"Fax.pkg",          "Hueforge.pkg", "Printer Driver.pkg", "Printer Manager.pkg",
                         "Scan Manager.pkg", "Scanmate.pkg", "Scanwick.pkg"};
    for (const std::string &name : known)
        postExpanded(expandedFolder("of " + name, {"inner folder/" + name}));
    EXPECT_EQ(listedNames(), known);
    for (std::size_t i = 0; i < known.size(); ++i) {
        EXPECT_EQ(listedPaths()[i], (downloads() / ("of " + known[i]) / "inner folder" / known[i]).string());
        EXPECT_EQ([[webList objectAtIndex:i] objectForKey:@"BDObject"], pane);
    }
    EXPECT_EQ(counter("copyflag"), 0);
    EXPECT_FALSE(fs::exists(desktop()));
}

TEST_F(UnpackChain, OnlyTheScanManagerSetsTheScannerCount) {
    select(9);
    postExpanded(expandedFolder("a", {"Scanmate.pkg", "Scanwick.pkg"}));
    EXPECT_EQ(counter("scannerCount"), 0);
    postExpanded(expandedFolder("b", {"Scan Manager.pkg"}));
    EXPECT_EQ(counter("scannerCount"), 4);
}

TEST_F(UnpackChain, ADownloadedUninstallerIsPassedOver) {
    postExpanded(expandedFolder("a", {"Uninstaller.pkg", "Fax.pkg"}));
    EXPECT_EQ(listedPaths(),
              (Texts{(downloads() / "a" / "Fax.pkg").string(), hostResource("Uninstaller.pkg").string()}));
}

TEST_F(UnpackChain, WhatCannotBeInstalledGoesToTheDesktopWhole) {
    for (const std::string item : {"Other.pkg", "All.mpkg", "Tool.app", "deep/Other.pkg", "Quorvel RXM2 Installer"}) {
        select(9);
        const fs::path folder = expandedFolder("of " + fs::path(item).filename().string(), {item, "extra/read me.txt"});
        postExpanded(folder);
        EXPECT_EQ(counter("copyflag"), 1) << item;
        const fs::path aside = desktop() / folder.filename();
        EXPECT_EQ(contentsOf(aside / item), "content of " + item);
        EXPECT_TRUE(fs::exists(aside / "extra" / "read me.txt")) << item;
        EXPECT_TRUE(fs::exists(folder / item)) << item << " was moved, not copied";
        fs::remove_all(desktop());
        fs::remove_all(folder);
    }
    EXPECT_EQ(listedPaths().size(), 0U);
}

TEST_F(UnpackChain, WhatIsKnownAsHarmlessIsPassedOver) {
    select(9);
    postExpanded(expandedFolder("a", {"Quorvel Scanner.app/Contents/x", "Net Setter.app", "NetSetter.app", "README",
                                      "Fax.PKG", "Other.APP", "Uninstaller.pkg", "setup.dmg", ".hidden"}));
    EXPECT_EQ(counter("copyflag"), 0);
    EXPECT_EQ(listedPaths().size(), 0U);
    EXPECT_FALSE(fs::exists(desktop()));
}

TEST_F(UnpackChain, ItemsInsidePackagesAndApplicationsAreSearchedToo) {
    select(9);
    postExpanded(
        expandedFolder("a", {"Quorvel Scanner.app/Contents/Other.pkg", "Printer Driver.pkg/Contents/Fax.pkg"}));
    EXPECT_EQ(counter("copyflag"), 1);
    EXPECT_EQ(listedNames(), (Texts{"Printer Driver.pkg", "Fax.pkg"}));
}

TEST_F(UnpackChain, APackageIsFoundHoweverLongItsPathIs) {
    select(100);
    const std::string below = "/Fax.pkg";
    std::size_t found = 0;
    for (std::size_t length = 1016; length < 1032; ++length) {
        std::string item;
        for (std::size_t left = length - below.size(); left > 0; left = length - below.size() - item.size())
            item += left > 200 ? std::string(199, 'n') + "/" : std::string(left, 'm');
        postExpanded(expandedFolder("of " + std::to_string(length), {item + below}));
        EXPECT_EQ(listedPaths().size(), ++found) << length;
    }
}

TEST_F(UnpackChain, AnExistingSetAsideIsLeftAsItIs) {
    select(9);
    for (const std::string item : {"Other.pkg", "Quorvel RXM2 Installer"}) {
        const fs::path folder = expandedFolder("same", {item});
        writeFile(desktop() / "same" / "mine", "the user's own");
        postExpanded(folder);
        EXPECT_EQ(counter("copyflag"), 1);
        EXPECT_EQ(contentsOf(desktop() / "same" / "mine"), "the user's own") << item;
        EXPECT_EQ(items(desktop() / "same"), 1U) << item;
        fs::remove_all(desktop());
        fs::remove_all(folder);
    }
}

TEST_F(UnpackChain, TheLastExaminedItemsPathIsKept) {
    select(9);
    postExpanded(expandedFolder("a", {"Fax.pkg"}));
    EXPECT_EQ(text(field<NSString *>(pane, "documentsDirectoryPath")), (downloads() / "a" / "Fax.pkg").string());
    postExpanded(expandedFolder("b", {"All.mpkg"}));
    EXPECT_EQ(text(field<NSString *>(pane, "documentsDirectoryPath")), (downloads() / "b" / "All.mpkg").string());
    postExpanded(expandedFolder("c", {"read me.txt"}));
    EXPECT_EQ(text(field<NSString *>(pane, "documentsDirectoryPath")), (downloads() / "b" / "All.mpkg").string());
}

TEST_F(UnpackChain, APassedOverItemsPathIsKeptToo) {
    select(9);
    for (const std::string item : {"Uninstaller.pkg", "Net Setter.app", "README"}) {
        const fs::path folder = expandedFolder("of " + item, {item});
        postExpanded(folder);
        EXPECT_EQ(text(field<NSString *>(pane, "documentsDirectoryPath")), (folder / item).string());
    }
}

TEST_F(UnpackChain, EachArchiveStartsWithBothFlagsCleared) {
    select(9);
    field<int>(pane, "copyflag") = 1;
    field<int>(pane, "installflag") = 1;
    postExpanded(expandedFolder("a", {"Fax.pkg"}));
    EXPECT_EQ(counter("copyflag"), 0);
    EXPECT_EQ(counter("installflag"), 0);
}

TEST_F(UnpackChain, AMissingFolderStillCountsAsOneDownload) {
    select(3);
    postExpanded(downloads() / "missing");
    postExpanded(expandedFolder("empty", {}));
    [[NSNotificationCenter defaultCenter] postNotificationName:@"unzipcompleted" object:nil userInfo:nil];
    EXPECT_EQ([field<NSArray *>(pane, "unzipcountArr") count], 3U);
    EXPECT_EQ(text([field<NSArray *>(pane, "unzipcountArr") lastObject]), "receiveunzipNoti");
    EXPECT_TRUE(waitUntil([] { return counted() == 1; }));
}

// Endings

TEST_F(UnpackChain, NothingEndsBeforeTheLastDownload) {
    select(2);
    [statusLine setStringValue:@"as it was"];
    postExpanded(expandedFolder("a", {"Fax.pkg"}));
    EXPECT_EQ(statusText(), "as it was");
    EXPECT_EQ(listedNames(), Texts{"Fax.pkg"});
}

TEST_F(UnpackChain, TheInstallEndingSwitchesTheBarsAndInstallsAfterThreeSeconds) {
    [downloadBar setHidden:NO];
    [dummyBar setHidden:NO];
    [bar setHidden:YES];
    NSDate *start = [NSDate date];
    postExpanded(expandedFolder("a", {"Fax.pkg"}));
    EXPECT_TRUE([downloadBar isHidden]);
    EXPECT_TRUE([dummyBar isHidden]);
    EXPECT_FALSE([bar isHidden]);
    EXPECT_FALSE([bar isIndeterminate]);
    EXPECT_EQ([bar controlSize], NSRegularControlSize);
    EXPECT_EQ(barValue(), 1.0);
    EXPECT_EQ(statusText(), text([pane localizedStringForKey:@"Installing"]) + "...");
    EXPECT_EQ(counted(), 0);
    ASSERT_TRUE(waitUntil([] { return counted() == 1; }));
    EXPECT_GE(-[start timeIntervalSinceNow], 2.9);
}

TEST_F(UnpackChain, TheInstallEndingStopsTheDownloadBarAndStartsTheInstallationBar) {
    postExpanded(expandedFolder("a", {"Fax.pkg"}));
    EXPECT_TRUE([[downloadBar calls] isEqual:@[ @"stop" ]]) << text([downloadBar calls]);
    EXPECT_TRUE([[bar calls] isEqual:@[ @"start" ]]) << text([bar calls]);
}

TEST_F(UnpackChain, TheInstallEndingEmptiesTheStatusLineFirst) {
    postExpanded(expandedFolder("a", {"Fax.pkg"}));
    NSString *installing = [NSString stringWithFormat:@"%@...", [pane localizedStringForKey:@"Installing"]];
    EXPECT_TRUE([[statusLine texts] isEqual:(@[ @"", installing ])]) << text([statusLine texts]);
}

TEST_F(UnpackChain, AFurtherNotificationAfterTheEndEndsNothingAgain) {
    postExpanded(expandedFolder("a", {"Fax.pkg"}));
    const std::size_t length = listedPaths().size();
    [statusLine setStringValue:@"later"];
    postExpanded(expandedFolder("b", {"README"}));
    EXPECT_EQ(statusText(), "later");
    EXPECT_EQ(listedPaths().size(), length);
}

TEST_F(UnpackChain, AnEmptyListIsCompletedWithNothingAndStillScheduled) {
    postExpanded(expandedFolder("a", {"README"}));
    EXPECT_EQ(listedPaths().size(), 0U);
    EXPECT_TRUE(waitUntil([] { return counted() == 1; }));
}

TEST_F(UnpackChain, TheHostsUninstallerEndsTheList) {
    postExpanded(expandedFolder("a", {"Fax.pkg"}));
    NSDictionary *last = [webList lastObject];
    EXPECT_EQ(text([last objectForKey:@"installerpath"]), hostResource("Uninstaller.pkg").string());
    EXPECT_EQ(text([last objectForKey:@"componentname"]), "Printer Software Uninstaller");
    EXPECT_EQ(text([last objectForKey:@"BDObject"]), "Uninstaller");
}

TEST_F(UnpackChain, SeveralModelsWithAManualAddOneUsersGuide) {
    writeSettings(@{@"VantWithoutConnection" : @"no", @"MODELS" : @[ @"QX 1", @"QX 2", @"QX 3" ]});
    fs::create_directories(media() / "MANUAL" / "QX 2");
    fs::create_directories(media() / "MANUAL" / "QX 3");
    postExpanded(expandedFolder("a", {"Fax.pkg"}));
    EXPECT_EQ(listedNames(), (Texts{"Fax.pkg", "User's Guide", "Printer Software Uninstaller"}));
    NSDictionary *manual = [webList objectAtIndex:1];
    EXPECT_EQ(text([manual objectForKey:@"installerpath"]), hostResource("Manual.pkg").string());
    EXPECT_EQ(text([manual objectForKey:@"BDObject"]), "MANUAL");
}

TEST_F(UnpackChain, AnyOtherWordThanNoAddsNoUsersGuide) {
    fs::create_directories(media() / "MANUAL" / "QX 1");
    int expanded = 0;
    for (id settings in @[
             @{@"VantWithoutConnection" : @"yes",
               @"MODELS" : @[ @"QX 1" ]},
             @{@"VantWithoutConnection" : @"No",
               @"MODELS" : @[ @"QX 1" ]},
             @{@"MODELS" : @[ @"QX 1" ]},
             @{@"VantWithoutConnection" : @"no",
               @"MODELS" : @[ @"QX 9" ]}
         ]) {
        [webList removeAllObjects];
        writeSettings(settings);
        select(++expanded);
        postExpanded(expandedFolder("a" + std::to_string(expanded), {"Fax.pkg"}));
        EXPECT_EQ(listedNames(), (Texts{"Fax.pkg", "Printer Software Uninstaller"})) << text(settings);
    }
}

TEST_F(UnpackChain, TheSetAsideEndingOpensTheFolderAndInstallsNothing) {
    openNothing();
    writeWebSelection(@[ entry(@"Print Driver", @"http://127.0.0.1:1/a.zip") ]);
    [downloadBar setHidden:NO];
    [statusLine setStringValue:@"before"];
    postExpanded(expandedFolder("a", {"Fax.pkg", "Other.pkg"}));
    EXPECT_EQ([observer countOf:@"setIsButton2Enabled:YES"], 1U);
    EXPECT_TRUE([downloadBar isHidden]);
    EXPECT_EQ(statusText(), "");
    EXPECT_EQ(field<BOOL>(pane, "mNonFlatInstaller"), YES);
    EXPECT_EQ(opened(), Texts{desktop().string()});
    EXPECT_FALSE(fs::exists(temporary("Vantrel/SelectedInput.plist")));
    EXPECT_FALSE(waitUntil([] { return counted() > 0; }, 3.5)) << "packages would be installed";
}

TEST_F(UnpackChain, TheSetAsideEndingStopsTheDownloadBarAlone) {
    openNothing();
    postExpanded(expandedFolder("a", {"Other.pkg"}));
    EXPECT_TRUE([[downloadBar calls] isEqual:@[ @"stop" ]]) << text([downloadBar calls]);
    EXPECT_EQ([[bar calls] count], 0U);
}

TEST_F(UnpackChain, TheSetAsideEndingKeepsTheSelectionFileWhenTheInstallFlagIsUp) {
    static VantInstallation *shown;
    shown = pane;
    struct Opener {
        static BOOL open(id, SEL, NSString *) {
            field<int>(shown, "installflag") = 1;
            return YES;
        }
    };
    method_setImplementation(class_getInstanceMethod([NSWorkspace class], @selector(openFile:)),
                             reinterpret_cast<IMP>(&Opener::open));
    writeWebSelection(@[]);
    postExpanded(expandedFolder("a", {"Other.pkg"}));
    EXPECT_EQ(counter("installflag"), 1);
    EXPECT_TRUE(fs::exists(temporary("Vantrel/SelectedInput.plist")));
}

TEST_F(UnpackChain, WithoutADesktopFolderWhatStandsInItsPlaceIsRemoved) {
    openNothing();
    fs::create_directory_symlink(scratch / "nowhere", desktop());
    postExpanded(expandedFolder("a", {"Other.pkg"}));
    EXPECT_FALSE(fs::is_symlink(desktop()));
    EXPECT_EQ(opened(), Texts{});
}

TEST_F(UnpackChain, OnlyTheLastDownloadDecidesBetweenTheEndings) {
    openNothing();
    select(2);
    postExpanded(expandedFolder("first", {"Other.pkg"}));
    postExpanded(expandedFolder("second", {"Fax.pkg"}));
    EXPECT_EQ(opened(), Texts{});
    EXPECT_TRUE(fs::exists(desktop() / "first" / "Other.pkg"));
    EXPECT_EQ(listedNames(), (Texts{"Fax.pkg", "Printer Software Uninstaller"}));
    EXPECT_TRUE(waitUntil([] { return counted() == 1; }));
}

TEST_F(UnpackChain, WithoutADesktopFolderTheSetAsideEndingLeavesThePaneAsItIs) {
    openNothing();
    writeWebSelection(@[]);
    fs::remove_all(home() / "Desktop");
    writeFile(home() / "Desktop", "a file where the folder would be");
    [statusLine setStringValue:@"as it was"];
    postExpanded(expandedFolder("a", {"Other.pkg"}));
    EXPECT_EQ(statusText(), "as it was");
    EXPECT_EQ(opened(), Texts{});
    EXPECT_EQ([observer countOf:@"setIsButton2Enabled:YES"], 0U);
    EXPECT_TRUE(fs::exists(temporary("Vantrel/SelectedInput.plist")));
    EXPECT_EQ(contentsOf(home() / "Desktop"), "a file where the folder would be");
}

TEST_F(UnpackChain, LinksAreNotFollowedOutOfTheFolder) {
    select(9);
    writeFile(scratch / "outside" / "Other.pkg", "not of the download");
    const fs::path folder = expandedFolder("a", {"README"});
    fs::create_directory_symlink(scratch / "outside", folder / "link");
    fs::create_directory_symlink(folder, folder / "loop");
    postExpanded(folder);
    EXPECT_EQ(counter("copyflag"), 0);
    EXPECT_FALSE(fs::exists(desktop()));
}
