#import "install/status/VantInstallation+StatusLine.h"

#import "base/Accessibility.h"
#import "base/Bridge.h"
#import "base/MainQueue.h"
#import "base/Retained.h"
#include "base/SharedValue.hpp"
#include "install/status/ComponentName.hpp"
#include "install/status/InstallingText.hpp"
#import "shell/VantInstallation+HostLink.h"

static const std::chrono::milliseconds longestWaitForMainThread{2000};

/// Shows a text in the status line. A new one is read out; the same one comes again with each word of an installer.
static void showStatus(NSTextField *line, NSString *text) {
    const BOOL changed = ![[line stringValue] isEqualToString:text];
    [line setStringValue:text];
    if (changed)
        VantAnnounce(line, text);
}

@implementation VantInstallation (StatusLine)

- (void)showWaitingLook {
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
    [mVTPackageDownloadProg setStyle:NSProgressIndicatorBarStyle];
#pragma clang diagnostic pop
    [mVTPackageDownloadProg setIndeterminate:NO];
    [mVTPackageDownloadProg setControlSize:NSControlSizeRegular];
    [mVTPackageDownloadProg setMinValue:0.0];
    [mVTPackageDownloadProg setMaxValue:100.0];
    [mVTPackageDownloadProg startAnimation:self];
    [mVTPackageDownloadProg setHidden:YES];
    [mVTPackageInstallationProg setHidden:YES];
    [mVTPackageInstallationProgDummy setHidden:NO];
}

- (void)showConnectingLook {
    [self showWord:@"Connecting"];
}

- (void)showDownloadingLook {
    [mVTPackageInstallationProgDummy setHidden:YES];
    [mVTPackageDownloadProg setHidden:NO];
    [self showWord:@"Downloading"];
}

- (void)showDownloadedShare:(double)share {
    if (share > [mVTPackageDownloadProg doubleValue])
        [mVTPackageDownloadProg setDoubleValue:share];
}

- (void)showOfflineLook {
    [mVTPackageDownloadProg setHidden:YES];
    [mVTPackageInstallationProgDummy setHidden:YES];
    [mVTPackageInstallationProg setHidden:NO];
}

- (void)showSetAsideLook {
    [mVTPackageDownloadProg stopAnimation:self];
    [mVTPackageDownloadProg setHidden:YES];
    [mProgressInfoTF setStringValue:@""];
}

- (void)showInstallingLook {
    [mVTPackageDownloadProg stopAnimation:self];
    [mVTPackageDownloadProg setHidden:YES];
    [mProgressInfoTF setStringValue:@""];
    [mVTPackageInstallationProg setIndeterminate:NO];
    [mVTPackageInstallationProg setControlSize:NSControlSizeRegular];
    [mVTPackageInstallationProg startAnimation:self];
    [mVTPackageInstallationProgDummy setHidden:YES];
    [mVTPackageInstallationProg setHidden:NO];
    // A sliver shows before the first package reports.
    [self updateProgressWithDoubleValue:1.0];
    [self showWord:@"Installing"];
}

- (void)showFinishedLook {
    NSString *text = [self hostStringForKey:@"FINISH.TITLE"];
    const auto bar = vant::Retained<NSProgressIndicator>::retain(mVTPackageInstallationProg);
    const auto line = vant::Retained<NSTextField>::retain(mProgressInfoTF);
    const auto shown = vant::Retained<NSString>::retain(text == nil ? @"" : text);
    auto show = [bar, line, shown] {
        [bar.get() stopAnimation:nil];
        showStatus(line.get(), shown.get());
    };
    // From an installer thread the text has to queue up behind the progress texts that the thread sent before, or one
    // of them would be the last to show.
    if ([NSThread isMainThread])
        show();
    else
        vant::onMainQueueAndWait(show, longestWaitForMainThread);
}

/// Shows one of the plug-in's own words, as something that goes on.
- (void)showWord:(NSString *)key {
    showStatus(mProgressInfoTF, [NSString stringWithFormat:@"%@...", [self localizedStringForKey:key]]);
}

- (NSString *)displayInstallingForComponent:(NSString *)componentDisplayName {
    NSString *word = [self localizedStringForKey:@"Installing"];
    // The host's tables announce their word order through this one key.
    NSString *language = [[NSBundle mainBundle] localizedStringForKey:@"Language Setting" value:@"" table:nil];
    const vant::InstallingText shown =
        vant::installingText(vant::utf8(language), vant::utf8(word), vant::utf8(componentDisplayName));
    [self trace:@"%@", vant::nsString(shown.trace)];
    return vant::nsString(shown.text);
}

- (NSString *)displayNameComponent:(const std::string &)component inFlow:(vant::Flow)flow {
    const vant::DisplayName name = vant::displayName(flow, component);
    if (name.source == vant::DisplayName::Source::Itself)
        return vant::nsString(component);
    NSString *text = vant::nsString(name.text);
    if (name.source == vant::DisplayName::Source::Text)
        return text;
    NSString *localized = [self localizedStringForKey:text];
    return localized == nil ? vant::nsString(component) : localized;
}

- (void)updateProgressWithDoubleValue:(double)value {
    [mVTPackageInstallationProg setDoubleValue:value];
    // Installer threads compare with what the bar shows, but must not ask the bar itself.
    vant::setSharedValue(mShownInstallationProgress, [mVTPackageInstallationProg doubleValue]);
}

- (void)updateInstallingTextField:(NSString *)text {
    showStatus(mProgressInfoTF, text);
}

@end
