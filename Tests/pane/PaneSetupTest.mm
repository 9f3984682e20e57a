#import "PaneTest.h"

#import "slides/VantInstallation+SlideContent.h"
#import "ui/VantInstallation+PaneSetup.h"

#include "Jail.hpp"
#include <atomic>
#include <thread>

using namespace vant::test;

namespace fs = std::filesystem;

namespace {

/// Addresses that nothing answers.
NSArray *webEntries(NSUInteger count) {
    NSMutableArray *entries = [NSMutableArray array];
    for (NSUInteger i = 0; i < count; ++i)
        [entries addObject:entry(@"Print Driver",
                                 [NSString stringWithFormat:@"http://127.0.0.1:9/p%d.zip", static_cast<int>(i)])];
    return entries;
}

NSUInteger count(id pane, const char *list) {
    return [field<NSArray *>(pane, list) count];
}

} // namespace

class PaneSetup : public PaneTest {
protected:
    void wantWebFlow() { writeSettings(@{@"Smart Update" : @"1"}); }

    std::string statusLine() { return text([field<NSTextField *>(pane, "mProgressInfoTF") stringValue]); }
};

TEST_F(PaneSetup, AWebSelectionStartsTheWebView) {
    wantWebFlow();
    writeWebSelection(webEntries(2));
    writeMediaSelection(@[ entry(@"Scan Driver", @"/a.pkg") ]);
    createPane();
    EXPECT_EQ(count(pane, "objects"), 2U);
    EXPECT_EQ(count(pane, "objects1"), 0U);
    EXPECT_EQ(count(pane, "mInstallCompArrayForCDUpdate"), 0U);
    EXPECT_TRUE([field<id>(pane, "selectedarrXML1") isEqual:@[]]) << "the media selection is read when it is needed";
    EXPECT_EQ(statusLine(), "Connecting...");
}

TEST_F(PaneSetup, AnEmptyWebSelectionStartsTheMediaView) {
    wantWebFlow();
    writeWebSelection(@[]);
    writeMediaSelection(@[ entry(@"Scan Driver", @"/a.pkg") ]);
    createPane();
    EXPECT_EQ(count(pane, "objects"), 0U);
    EXPECT_EQ(count(pane, "objects1"), 1U);
}

TEST_F(PaneSetup, AnUnreadableWebSelectionStartsTheMediaView) {
    wantWebFlow();
    for (const std::string &bytes :
         {std::string("{ a = b; }"), std::string(""), std::string("bplist00"),
          std::string("<?xml version=\"1.0\"?><plist><array><dict>"), std::string(5000, '(')}) {
        fs::create_directories(temporary("Vantrel"));
        writeFile(temporary("Vantrel/SelectedInput.plist"), bytes);
        createPane();
        EXPECT_EQ(count(pane, "objects"), 0U) << bytes.substr(0, 60);
        EXPECT_EQ(count(pane, "mInstallCompArrayForCDUpdate"), 1U) << bytes.substr(0, 60);
        EXPECT_EQ(contentsOf(temporary("Vantrel/SelectedInput.plist")), bytes) << "the file was changed";
    }
}

TEST_F(PaneSetup, AWebErrorMeansThatTheWebSelectionIsNeitherAwaitedNorRead) {
    writeSettings(@{@"Smart Update" : @"1", @"WebError" : @"1"});
    createPane();
    EXPECT_EQ(count(pane, "mInstallCompArrayForCDUpdate"), 1U);
    writeWebSelection(webEntries(2));
    createPane();
    EXPECT_EQ(count(pane, "selectedarrXML"), 0U);
    EXPECT_EQ(count(pane, "objects"), 0U);
    EXPECT_EQ(statusLine(), "");
}

TEST_F(PaneSetup, WithoutSmartUpdateTheMediaViewStarts) {
    writeSettings(@{@"Smart Update" : @"true"});
    writeWebSelection(webEntries(2));
    writeMediaSelection(@[ entry(@"Scan Driver", @"/a.pkg") ]);
    createPane();
    EXPECT_EQ(count(pane, "objects"), 0U);
    EXPECT_EQ(count(pane, "objects1"), 1U);
    EXPECT_TRUE([field<id>(pane, "selectedarrXML1") isEqual:@[ entry(@"Scan Driver", @"/a.pkg") ]]);
}

TEST_F(PaneSetup, AMissingWebSelectionIsAwaitedAndSaidSoOnTheConsole) {
    wantWebFlow();
    std::atomic<bool> waited{false};
    std::thread host([&waited] {
        // The pane has looked for the file once before this, and looks again five seconds later.
        std::this_thread::sleep_for(std::chrono::milliseconds(1500));
        waited = true;
        @autoreleasepool {
            writeWebSelection(webEntries(1));
        }
    });
    testing::internal::CaptureStderr();
    createPane();
    const std::string console = testing::internal::GetCapturedStderr();
    host.join();
    EXPECT_TRUE(waited);
    EXPECT_EQ(count(pane, "objects"), 1U);
    const std::size_t first = console.find("FILE NOT FOUND !!!\n");
    ASSERT_NE(first, std::string::npos) << console;
    EXPECT_EQ(console.find("FILE NOT FOUND !!!\n", first + 1), std::string::npos) << "it is said every five seconds";
}

TEST_F(PaneSetup, AMissingOrUnreadableMediaSelectionIsAbsent) {
    createPane();
    EXPECT_EQ(field<id>(pane, "selectedarrXML1"), nil);
    EXPECT_EQ(count(pane, "objects1"), 0U);
    writeMediaSelection(@{@"TYPE" : @"no array"});
    createPane();
    EXPECT_EQ(field<id>(pane, "selectedarrXML1"), nil);
    EXPECT_EQ(count(pane, "mInstallCompArrayForCDUpdate"), 1U);
}

TEST_F(PaneSetup, LeftoversOfAnEarlierRunAreGoneAndNothingElse) {
    for (const char *file : {"keep_ModelInfo.plist", "WebInstallError.plist", "Download/Old.zip",
                             "Download/Old/a/b.pkg", "Profiles/kept", "GTA/EN/kept", "kept"})
        writeFile(temporary("Vantrel") / file, "x");
    createPane();
    for (const char *gone : {"keep_ModelInfo.plist", "WebInstallError.plist", "Download"})
        EXPECT_FALSE(fs::exists(temporary("Vantrel") / gone)) << gone;
    for (const char *kept : {"Profiles/kept", "GTA/EN/kept", "kept"})
        EXPECT_TRUE(fs::exists(temporary("Vantrel") / kept)) << kept;
}

TEST_F(PaneSetup, WhatCannotBeRemovedIsLeft) {
    fs::create_directories(temporary("Vantrel"));
    fs::create_symlink(home(), temporary("Vantrel/Download"));
    createPane();
    EXPECT_NE(pane, nil);
    EXPECT_TRUE(fs::is_directory(home() / "Desktop")) << "the link was followed";
}

TEST_F(PaneSetup, ListsAndFlagsAreMadeAnew) {
    createIdlePane();
    field<int>(pane, "scannerCount") = 5;
    field<NSInteger>(pane, "prevSelection") = 1;
    EXPECT_TRUE([pane setUpPane]);
    for (const char *list : {"objects", "selectedarrXML", "objects1", "mSelectedSoftwareList"})
        EXPECT_TRUE([field<id>(pane, list) isEqual:@[]]) << list;
    EXPECT_TRUE(field<BOOL>(pane, "isParseXML"));
    EXPECT_TRUE(field<BOOL>(pane, "isParseXML1"));
    EXPECT_EQ(field<int>(pane, "scannerCount"), 0);
    EXPECT_EQ(field<NSInteger>(pane, "prevSelection"), 0);
}

TEST_F(PaneSetup, TheHostsButtonsAreDisabledSecondThenFirst) {
    createPane();
    EXPECT_EQ(text([[[observer calls] subarrayWithRange:NSMakeRange(0, 2)] componentsJoinedByString:@" "]),
              "setIsButton2Enabled:NO setIsButton1Enabled:NO");
}

TEST_F(PaneSetup, TheSlideTimerRepeatsEveryFifteenSeconds) {
    NSDate *before = [NSDate date];
    createPane();
    NSTimer *timer = field<NSTimer *>(pane, "timer");
    ASSERT_TRUE([timer isValid]);
    EXPECT_EQ([timer timeInterval], 15.0);
    EXPECT_EQ([timer userInfo], nil);
    EXPECT_NEAR([[timer fireDate] timeIntervalSinceDate:before], 15.0, 2.0);
    field<NSInteger>(pane, "prevSelection") = 0;
    [timer fire];
    EXPECT_EQ(field<NSInteger>(pane, "prevSelection"), 1) << "the timer turned no page";
    EXPECT_TRUE([timer isValid]);
}

TEST_F(PaneSetup, TheFirstSlideIsUpAndBackIsOffWhateverTheNibSays) {
    createIdlePane();
    auto *back = field<NSButton *>(pane, "backButton");
    [back setEnabled:YES];
    [back setImage:nil];
    [pane setUpPane];
    EXPECT_NE([field<NSImageView *>(pane, "imageView") image], nil);
    EXPECT_FALSE([back isEnabled]);
    ASSERT_NE([back image], nil);
    EXPECT_EQ([back image], [pane resourceImageNamed:@"Back_Disable.png"]);
}

TEST_F(PaneSetup, TheFirstSlidesPictureComesFromItsFileBeforeTheBuiltInOne) {
    const fs::path folder = temporary("Vantrel/GTA_Default/Language Setting");
    fs::create_directories(folder);
    fs::copy_file(fs::path(VANT_TEST_BUNDLE) / "Resources" / "Next_Normal.png", folder / "image.png");
    createPane();
    EXPECT_EQ([[field<NSImageView *>(pane, "imageView") image] size].width, 28);
}

TEST_F(PaneSetup, TheVendorsNameStandsInEveryMarkedPlaceOfTheTitle) {
    [[observer strings] setObject:@"__MFG__ toner for __MFG__" forKey:@"TONER.TITLE"];
    [[observer strings] setObject:@"By __MFG__." forKey:@"TONER.DESC"];
    createPane();
    EXPECT_EQ(text([field<NSTextField *>(pane, "productTitle") stringValue]), "Quorvel toner for Quorvel");
    EXPECT_EQ(text([field<NSTextField *>(pane, "productDesc") stringValue]), "By Quorvel.");
}

TEST_F(PaneSetup, TheFirstSlidesTextsComeFromItsFilesBeforeTheHostsStrings) {
    // A host that names no language: the key itself is the folder.
    writeFile(temporary("Vantrel/GTA/Language Setting/string.xml"),
              "<TITLE>Main __MFG__</TITLE><MESSAGE>text</MESSAGE>");
    [[observer strings] setObject:@"host" forKey:@"TONER.TITLE"];
    createPane();
    EXPECT_EQ(text([field<NSTextField *>(pane, "productTitle") stringValue]), "Main __MFG__");
    EXPECT_EQ(text([field<NSTextField *>(pane, "productDesc") stringValue]), "text");
}
