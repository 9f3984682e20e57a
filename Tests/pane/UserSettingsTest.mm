#import "PaneTest.h"

#import "shell/VantInstallation+UserSettings.h"

#include "Jail.hpp"

using namespace vant::test;

namespace fs = std::filesystem;

namespace {

const char *const settingsFile = "Vantrel/VantUserSettings.plist";

void writeBytes(const std::string &bytes) {
    fs::create_directories(temporary("Vantrel"));
    writeFile(temporary(settingsFile), bytes);
}

NSDictionary *scanDriverSettings(id location) {
    return @{@"PackagesInfo" : @{@"Scan Driver1" : @{@"LOCATION" : location}}};
}

std::string repeated(const std::string &text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

/// Plain text in UTF-16 with its byte order mark.
std::string utf16(const std::string &text, bool isBigEndian) {
    std::string bytes = isBigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char letter : text)
        bytes += isBigEndian ? std::string{'\0', letter} : std::string{letter, '\0'};
    return bytes;
}

const std::string xmlHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">";

} // namespace

class UserSettings : public PaneTest {
protected:
    UserSettings() { createIdlePane(); }

    /// The switches as the pane takes them from the settings file: smart update, web error, debug.
    std::string switches() {
        [pane applySwitchesOfSettings:[pane loadUserSettingsFile]];
        return std::to_string(field<int>(pane, "mSmartUpdate")) + std::to_string(field<int>(pane, "mWebError")) +
               (field<BOOL>(pane, "VantInstallationDebugFlag") ? "1" : "0");
    }
};

TEST_F(UserSettings, AreNothingWithoutAFile) {
    EXPECT_EQ([pane loadUserSettingsFile], nil);
    EXPECT_EQ(switches(), "000");
}

TEST_F(UserSettings, OnlyExactTextsSwitchOn) {
    writeSettings(@{@"Smart Update" : @"1", @"WebError" : @"1", @"Debug" : @"debug_on"});
    EXPECT_EQ(switches(), "111");
}

TEST_F(UserSettings, OtherTextsAndTypesLeaveSwitchesOff) {
    for (id value in @[ @"true", @"YES", @"01", @" 1", @"", @1, @(YES), @[ @"1" ], @{@"text" : @"1"}, [NSData data] ]) {
        writeSettings(@{@"Smart Update" : value, @"WebError" : value, @"Debug" : value});
        EXPECT_EQ(switches(), "000") << text(value);
    }
    writeSettings(@{@"Debug" : @"1"});
    EXPECT_EQ(switches(), "000");
}

TEST_F(UserSettings, AreReadAfreshOnEveryCallIntoADictionaryOfTheCallersOwn) {
    writeSettings(@{@"Smart Update" : @"0"});
    NSMutableDictionary *first = [pane loadUserSettingsFile];
    [first setObject:@"1" forKey:@"Smart Update"];
    EXPECT_EQ(text([[pane loadUserSettingsFile] objectForKey:@"Smart Update"]), "0");
    writeSettings(@{@"Smart Update" : @"2"});
    EXPECT_EQ(text([[pane loadUserSettingsFile] objectForKey:@"Smart Update"]), "2");
}

TEST_F(UserSettings, AreReadFromTheKeptPathWhateverTheTemporaryFolderHolds) {
    writeSettings(@{@"Smart Update" : @"0"});
    field<NSString *>(pane, "mUserOptionsFilePath5") = [ns(jail() / "kept.plist") retain];
    writeFile(jail() / "kept.plist", "{ \"Smart Update\" = 1; }");
    EXPECT_EQ(switches(), "100");
}

TEST_F(UserSettings, MayBeXMLBinaryOrOldStyle) {
    NSDictionary *settings = @{@"Smart Update" : @"1"};
    for (const NSPropertyListFormat format : {NSPropertyListXMLFormat_v1_0, NSPropertyListBinaryFormat_v1_0}) {
        NSData *bytes = [NSPropertyListSerialization dataWithPropertyList:settings
                                                                   format:format
                                                                  options:0
                                                                    error:nullptr];
        fs::create_directories(temporary("Vantrel"));
        [bytes writeToFile:ns(temporary(settingsFile)) atomically:YES];
        EXPECT_EQ(switches(), "100") << static_cast<int>(format);
    }
    writeBytes("{ \"Smart Update\" = 1; Debug = debug_on; }");
    EXPECT_EQ(switches(), "101");
}

TEST_F(UserSettings, MayBeginWithAByteOrderMarkOrBeUTF16OrLackTheirBraces) {
    const std::string oldStyle = "{ \"Smart Update\" = \"1\"; Debug = \"debug_on\"; }";
    const std::string xml = xmlHead + "<dict><key>Smart Update</key><string>1</string><key>Debug</key>"
                                      "<string>debug_on</string></dict></plist>";
    const std::string strings = "\"Smart Update\" = \"1\";\nDebug = \"debug_on\";\n";
    const std::string mark = "\xEF\xBB\xBF";
    for (const std::string &bytes : {mark + oldStyle, mark + xml, utf16(oldStyle, false), utf16(oldStyle, true),
                                     strings, mark + strings, utf16(strings, false)}) {
        writeBytes(bytes);
        EXPECT_EQ(switches(), "101") << bytes;
    }
}

TEST_F(UserSettings, OfAnotherTypeOrUnreadableCountAsAbsent) {
    const std::string cases[] = {
        "",
        "hello",
        "(a, b)",
        "\"text\"",
        "<0fbd>",
        "{ a = ",
        "<*I99999999999999999999>",
        "<*",
        std::string(100, '\0'),
        "\1\2\3\4\5\6\7",
        "GSbinary-serialised\xFF\xFF",
        "bplist00",
        "bplist99 nonsense nonsense nonsense nonsense nonsense",
        "\xFF\xFE",
        xmlHead,
        xmlHead + "<array/></plist>",
        xmlHead + "<string>1</string></plist>",
        xmlHead + "<dict><key>Smart Update</key><string>1</string>",
        xmlHead + "<dict><string>Smart Update</string><string>1</string></dict></plist>",
        "<html><body>Sign in</body></html>",
        repeated("<", 100000),
        repeated("/*", 100000),
    };
    for (const std::string &bytes : cases) {
        writeBytes(bytes);
        EXPECT_EQ(switches(), "000") << testing::PrintToString(bytes.substr(0, 80));
        EXPECT_EQ(contentsOf(temporary(settingsFile)), bytes) << "the file was changed";
    }
}

TEST_F(UserSettings, OfAnyDepthDoNotEndTheProcess) {
    for (const char *opening : {"(", "{a=", "{a=("}) {
        writeBytes(repeated(opening, 1000000));
        EXPECT_EQ([pane loadUserSettingsFile], nil) << opening;
    }
    writeBytes(xmlHead + repeated("<array>", 1000000) + repeated("</array>", 1000000) + "</plist>");
    EXPECT_EQ([pane loadUserSettingsFile], nil);
    writeBytes(xmlHead + repeated("<dict><key>a</key>", 1000000));
    EXPECT_EQ([pane loadUserSettingsFile], nil);
}

TEST_F(UserSettings, MayHoldDeepEntriesOfOtherReaders) {
    writeBytes("{ \"Smart Update\" = 1; other = " + repeated("(", 300) + repeated(")", 300) + "; }");
    EXPECT_EQ(switches(), "100");
}

TEST_F(UserSettings, InABinaryFileTruncatedOrDamagedAnywhereDoNotEndTheProcess) {
    NSDictionary *settings =
        @{@"Smart Update" : @"1",
          @"MODELS" : @[ @"Q1", @"Q2" ],
          @"PackagesInfo" : @{@"Scan Driver1" : @{@"n" : @7}}};
    NSData *data = [NSPropertyListSerialization dataWithPropertyList:settings
                                                              format:NSPropertyListBinaryFormat_v1_0
                                                             options:0
                                                               error:nullptr];
    const std::string whole(static_cast<const char *>([data bytes]), [data length]);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        writeBytes(whole.substr(0, length));
        EXPECT_EQ([pane loadUserSettingsFile], nil) << length;
    }
    for (std::size_t at = 0; at < whole.size(); ++at)
        for (const char value : {'\x00', '\x01', '\x5F', '\x7F', '\xA1', '\xAF', '\xD1', '\xFF'}) {
            @autoreleasepool {
                std::string damaged = whole;
                damaged[at] = value;
                writeBytes(damaged);
                id read = [pane loadUserSettingsFile];
                EXPECT_TRUE(read == nil || [read isKindOfClass:[NSMutableDictionary class]]) << at << " " << +value;
            }
        }
}

TEST_F(UserSettings, GiveTheSecondScanDriverOnlyAsAString) {
    EXPECT_EQ([pane secondScanDriverLocation], nil);
    writeSettings(scanDriverSettings(@"/media/Scan2.pkg"));
    EXPECT_EQ(text([pane secondScanDriverLocation]), "/media/Scan2.pkg");
    for (id location in @[ @7, @[ @"/a" ], @{@"text" : @"/a"} ]) {
        writeSettings(scanDriverSettings(location));
        EXPECT_EQ([pane secondScanDriverLocation], nil) << text(location);
    }
    for (id wrong in @[ @"PackagesInfo", @[], @{@"Scan Driver1" : @"/a"}, @{@"Scan Driver1" : @[]}, @{} ]) {
        writeSettings(@{@"PackagesInfo" : wrong});
        EXPECT_EQ([pane secondScanDriverLocation], nil) << text(wrong);
    }
}

TEST_F(UserSettings, WantAManualWhenTheMediaHoldOneForAModel) {
    fs::create_directories(media() / "MANUAL" / "Q 200é");
    for (id models in @[ @[ @"Q100", @"Q 200é" ], @{@"Q100" : @"x", @"Q 200é" : @"y"}, @[ @7, @[], @"Q 200é" ] ]) {
        writeSettings(@{@"VantWithoutConnection" : @"no", @"MODELS" : models});
        EXPECT_TRUE([pane isManualWanted]) << text(models);
    }
}

TEST_F(UserSettings, WantNoManualOtherwise) {
    EXPECT_FALSE([pane isManualWanted]) << "no settings";
    fs::create_directories(media() / "MANUAL" / "Q200");
    for (id switchText in @[ @"yes", @"NO", @"", @0 ]) {
        writeSettings(@{@"VantWithoutConnection" : switchText, @"MODELS" : @[ @"Q200" ]});
        EXPECT_FALSE([pane isManualWanted]) << text(switchText);
    }
    for (id models in @[ @[], @{}, @[ @"Q999" ], @"Q200", @200, @[ @[ @"Q200" ] ], @{@"Q999" : @"Q200"} ]) {
        writeSettings(@{@"VantWithoutConnection" : @"no", @"MODELS" : models});
        EXPECT_FALSE([pane isManualWanted]) << text(models);
    }
}

class CreationSettings : public PaneTest {};

TEST_F(CreationSettings, AreReadOnceForTheSwitchesAndAfreshForTheRest) {
    fs::create_directories(media() / "MANUAL" / "Q200");
    NSMutableDictionary *settings = [NSMutableDictionary dictionaryWithDictionary:scanDriverSettings(@"/Scan2.pkg")];
    [settings setObject:@"debug_on" forKey:@"Debug"];
    [settings setObject:@"no" forKey:@"VantWithoutConnection"];
    [settings setObject:@[ @"Q200" ] forKey:@"MODELS"];
    writeSettings(settings);
    createPane();
    fs::remove(temporary(settingsFile));
    EXPECT_TRUE(field<BOOL>(pane, "VantInstallationDebugFlag"));
    EXPECT_EQ([pane secondScanDriverLocation], nil);
    EXPECT_FALSE([pane isManualWanted]);
}

TEST_F(CreationSettings, LieInTheWorkingFolderAndAreOnlyRead) {
    writeSettings(@{@"Debug" : @"debug_on"});
    const std::string before = contentsOf(temporary(settingsFile));
    createPane();
    EXPECT_EQ(text(field<NSString *>(pane, "mUserOptionsFilePath5")), temporary(settingsFile).string());
    EXPECT_EQ(contentsOf(temporary(settingsFile)), before);
}
