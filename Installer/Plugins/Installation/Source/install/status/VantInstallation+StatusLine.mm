#import "install/status/VantInstallation+StatusLine.h"

#import "base/Bridge.h"

#include "install/status/InstallingText.hpp"

@implementation VantInstallation (StatusLine)

- (void)showInstallingLook {
    [mVTPackageDownloadProg stopAnimation:self];
    [mVTPackageDownloadProg setHidden:YES];
    [mProgressInfoTF setStringValue:@""];
    [mVTPackageInstallationProg setIndeterminate:NO];
    [mVTPackageInstallationProg setControlSize:NSRegularControlSize];
    [mVTPackageInstallationProg startAnimation:self];
    [mVTPackageInstallationProgDummy setHidden:YES];
    [mVTPackageInstallationProg setHidden:NO];
    // A sliver shows before the first package reports.
    [mVTPackageInstallationProg setDoubleValue:1.0];
    NSString *text = [NSString stringWithFormat:@"%@...", [self localizedStringForKey:@"Installing"]];
    [mProgressInfoTF setStringValue:text];
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

- (void)updateProgressWithDoubleValue:(double)value {
    [mVTPackageInstallationProg setDoubleValue:value];
}

- (void)updateInstallingTextField:(NSString *)text {
    [mProgressInfoTF setStringValue:text];
}

@end
