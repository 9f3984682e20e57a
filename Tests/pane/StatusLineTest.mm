#import "install/status/VantInstallation+StatusLine.h"

#import "InstallTest.h"

using namespace vant::test;

static NSString *lookedUp(id /*pane*/, SEL /*operation*/, NSString *key) {
    return [NSString stringWithFormat:@"[%@]", key];
}

/// What a window was told to read out.
static std::vector<std::string> readOut;

/// Stands before the platform's, which has nobody to tell on this machine.
void NSAccessibilityPostNotificationWithUserInfo(id element, NSString *notification, NSDictionary *userInfo) {
    if ([element isKindOfClass:[NSWindow class]] &&
        [notification isEqual:NSAccessibilityAnnouncementRequestedNotification])
        readOut.push_back(text([userInfo objectForKey:NSAccessibilityAnnouncementKey]));
}

class StatusLine : public InstallTest {
protected:
    std::string word() { return text([pane localizedStringForKey:@"Installing"]); }
    std::string shown(NSString *name) { return text([pane displayInstallingForComponent:name]); }
};

TEST_F(StatusLine, WithoutALanguageSettingTheWordComesFirst) {
    EXPECT_EQ(shown(@"Pressdeck"), word() + " Pressdeck...");
    EXPECT_EQ(tracedCount("Language Default: English"), 1);
    EXPECT_EQ(tracedCount("Language"), 1);
}

TEST_F(StatusLine, GermanHostsHaveTheNameFirst) {
    setHostString(@"Language Setting", @"GR");
    EXPECT_EQ(shown(@"Pressdeck"), "Pressdeck " + word() + "...");
    EXPECT_EQ(tracedCount("Language 2: Korean and German"), 1);
    EXPECT_EQ(tracedCount("Language"), 1);
}

TEST_F(StatusLine, FrenchHostsHaveTheWordFirst) {
    setHostString(@"Language Setting", @"FN");
    EXPECT_EQ(shown(@"Pressdeck"), word() + " Pressdeck...");
    EXPECT_EQ(tracedCount("Language 1"), 1);
}

TEST_F(StatusLine, NothingIsTracedWithTracingOff) {
    field<BOOL>(pane, "VantInstallationDebugFlag") = NO;
    EXPECT_EQ(shown(@"Pressdeck"), word() + " Pressdeck...");
    EXPECT_EQ(trace(), "");
}

TEST_F(StatusLine, AnEmptyOrAbsentNameKeepsItsBlank) {
    EXPECT_EQ(shown(@""), word() + " ...");
    EXPECT_EQ(shown(nil), word() + " ...");
}

TEST_F(StatusLine, NoPlaceholderIsReadInAName) {
    EXPECT_EQ(shown(@"%@ %s %n"), word() + " %@ %s %n...");
}

TEST_F(StatusLine, SettersMoveTheBarAndTheText) {
    [pane updateProgressWithDoubleValue:37.5];
    [pane updateInstallingTextField:@"Working..."];
    EXPECT_EQ(barValue(), 37.5);
    EXPECT_EQ(statusText(), "Working...");
}

TEST_F(StatusLine, TheWaitingLookSettlesADownloadBarOfAnyKindAndHidesIt) {
    // Hosts bring nibs of their own, whose bars need not be those of ours.
    [downloadBar setStyle:NSProgressIndicatorSpinningStyle];
    [downloadBar setControlSize:NSSmallControlSize];
    [downloadBar setIndeterminate:YES];
    [downloadBar setMinValue:5];
    [downloadBar setMaxValue:50];
    [bar setHidden:NO];
    [dummyBar setHidden:YES];
    [pane showWaitingLook];
    EXPECT_EQ([downloadBar style], NSProgressIndicatorBarStyle);
    EXPECT_EQ([downloadBar controlSize], NSRegularControlSize);
    EXPECT_FALSE([downloadBar isIndeterminate]);
    EXPECT_EQ([downloadBar minValue], 0.0);
    EXPECT_EQ([downloadBar maxValue], 100.0);
    EXPECT_TRUE([[downloadBar calls] isEqual:@[ @"start" ]]) << text([downloadBar calls]);
    EXPECT_TRUE([downloadBar isHidden]);
    EXPECT_TRUE([bar isHidden]);
    EXPECT_FALSE([dummyBar isHidden]);
}

TEST_F(StatusLine, TheInstallingLookShowsASliverInTheInstallationBar) {
    [bar setHidden:YES];
    [bar setIndeterminate:YES];
    [dummyBar setHidden:NO];
    [downloadBar setHidden:NO];
    [statusLine setStringValue:@"before"];
    [pane showInstallingLook];
    EXPECT_FALSE([bar isHidden]);
    EXPECT_FALSE([bar isIndeterminate]);
    EXPECT_EQ([bar controlSize], NSRegularControlSize);
    EXPECT_EQ(barValue(), 1.0);
    EXPECT_TRUE([dummyBar isHidden]);
    EXPECT_TRUE([downloadBar isHidden]);
    EXPECT_EQ(statusText(), word() + "...");
}

TEST_F(StatusLine, OnlyKeysAreLookedUpNotNamesThatAreTheirOwnWords) {
    method_setImplementation(class_getInstanceMethod([pane class], @selector(localizedStringForKey:)),
                             reinterpret_cast<IMP>(lookedUp));
    const auto webName = [&](const char *component) {
        return text([pane displayNameComponent:component inFlow:vant::Flow::Web]);
    };
    EXPECT_EQ(webName("Fax.pkg"), "[PCFAXComponent]");
    EXPECT_EQ(webName("Scan Manager.pkg"), "Scan Manager");
    EXPECT_EQ(webName("Scanmate.pkg"), "Scanmate");
    EXPECT_EQ(webName("Uninstaller.pkg"), "Uninstaller.pkg");
}

TEST_F(StatusLine, EachNewTextIsReadOutOnce) {
    NSWindow *window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 100, 100)
                                                   styleMask:NSTitledWindowMask
                                                     backing:NSBackingStoreBuffered
                                                       defer:YES];
    [[window contentView] addSubview:statusLine];
    [observer.strings setObject:@"All done." forKey:@"FINISH.TITLE"];
    [pane showInstallingLook];
    for (int percentage = 0; percentage < 3; ++percentage)
        [pane updateInstallingTextField:@"Working..."];
    [pane showFinishedLook];
    EXPECT_EQ(readOut, (std::vector<std::string>{word() + "...", "Working...", "All done."}));
}

TEST_F(StatusLine, NothingIsReadOutThatNobodySees) {
    [pane updateInstallingTextField:@"Working..."];
    EXPECT_EQ(readOut, std::vector<std::string>{});
}
