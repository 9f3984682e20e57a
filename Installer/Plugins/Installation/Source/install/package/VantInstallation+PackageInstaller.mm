#import "install/package/VantInstallation+PackageInstaller.h"

#import "base/Bridge.h"
#import "base/MainQueue.h"
#import "base/Retained.h"
#import "install/chain/InstallNotifications.h"
#import "install/package/InstallOutcome.h"
#import "install/package/PackageRun.h"
#import "install/profiles/VantInstallation+ICCProfiles.h"
#import "install/status/VantInstallation+StatusLine.h"

#include "install/chain/PackageChain.hpp"
#include "install/package/InstallerCommand.hpp"
#include "install/package/InstallerOutput.hpp"
#include "install/package/InstallerStream.hpp"
#include "install/package/InstallProgress.hpp"
#include "install/status/ComponentName.hpp"

#include "base/AlwaysAssert.h"

static NSString *const markerFile = @"/tmp/universalCD.txt";
static const int outputEndedStatus = -1278;

static void createMarkerFile() {
    [[NSFileManager defaultManager] createFileAtPath:markerFile contents:nil attributes:nil];
}

static void removeMarkerFile() {
    NSFileManager *files = [NSFileManager defaultManager];
    if ([files fileExistsAtPath:markerFile])
        [files removeItemAtPath:markerFile error:nullptr];
}

static NSString *notificationName(vant::Announcement announcement) {
    switch (announcement) {
    case vant::Announcement::NextWebPackage:
        return VantInstallNextSUComponentNotification;
    case vant::Announcement::WebComplete:
        return VantSUInstallCompleteNotification;
    case vant::Announcement::NextMediaPackage:
        return VantInstallNextCDComponentNotification;
    case vant::Announcement::MediaComplete:
        return VantCDInstallCompleteNotification;
    case vant::Announcement::MediaFailed:
        return VantFindInstallFile3Notification;
    case vant::Announcement::Nothing:
        break;
    }
    return nil;
}

@implementation VantInstallation (PackageInstaller)

- (void)installCompoentAtPath:(NSDictionary *)webRecord {
    @autoreleasepool {
        [self installPackage:VantPackageRunOfRecord(webRecord, vant::InstallFlow::Web)];
    }
}

- (void)installCDComponentAtPath:(NSDictionary *)mediaRecord {
    @autoreleasepool {
        [self installPackage:VantPackageRunOfRecord(mediaRecord, vant::InstallFlow::Media)];
    }
}

- (void)installPackage:(const VantPackageRun &)package {
    FILE *stream = nullptr;
    status = [self launchInstallerFor:package stream:&stream];
    if (status != noErr) {
        // The chain stops here: going on would ask for every further package of a run that the user has refused.
        [self trace:@"***ERROR*** Authorization error:[%d]", status];
        return;
    }
    vant::InstallerStream output(stream);
    [self installICCProfilesIfRequired:package.fileName];
    if (vant::isPrinterDriver(package.flow, vant::utf8(package.componentName)))
        createMarkerFile();
    [self readOutput:output ofPackage:package];
    [self announceWhatFollowsInFlow:package.flow];
    output.drain();
}

- (OSStatus)launchInstallerFor:(const VantPackageRun &)package stream:(FILE **)stream {
    auto words = vant::installerArguments(vant::utf8(package.path));
    std::array<char *, words.size() + 1> arguments{};
    for (std::size_t i = 0; i < words.size(); ++i)
        arguments.at(i) = words.at(i).data();
    return AuthorizationExecuteWithPrivileges(authorizationRef, vant::installerTool, kAuthorizationFlagDefaults,
                                              arguments.data(), stream);
}

- (void)readOutput:(vant::InstallerStream &)output ofPackage:(const VantPackageRun &)package {
    while (const char *text = output.nextLine()) {
        const vant::InstallerLine line = vant::readInstallerLine(text);
        if (line.percentage)
            [self takeUp:*line.percentage ofPackage:package];
        if (line.verdict == vant::LineVerdict::Success) {
            removeMarkerFile();
            assert(status == noErr);
            return;
        }
        if (line.verdict == vant::LineVerdict::Failure) {
            [self endFailedPackage:package];
            return;
        }
    }
    removeMarkerFile();
    [mInstalledPackageDict setObject:VantOutcomePipeEnd forKey:package.fileName];
    status = outputEndedStatus;
}

- (void)endFailedPackage:(const VantPackageRun &)package {
    if (package.flow == vant::InstallFlow::Web || status == noErr)
        [self trace:@"ASSERT !!!"];
    [mInstalledPackageDict setObject:VantOutcomeFailed forKey:package.fileName];
    if (status == noErr)
        assert(false);
    removeMarkerFile();
}

- (void)takeUp:(const vant::Percentage &)percentage ofPackage:(const VantPackageRun &)package {
    mProgressindicatorValue = vant::installProgress(percentage.value, [self positionInFlow:package.flow]);
    // Lines that move nothing queue nothing, so that a chatty installer leaves the main thread alone.
    if (mProgressindicatorValue > [mVTPackageInstallationProg doubleValue])
        [self queueUpdateTo:percentage.value ofPackage:package];
    if (percentage.whole == 100)
        [mInstalledPackageDict setObject:VantOutcomeCompleted forKey:package.fileName];
}

- (void)queueUpdateTo:(double)percentage ofPackage:(const VantPackageRun &)package {
    @autoreleasepool {
        NSString *text = [self displayInstallingForComponent:[self displayNameOfPackage:package]];
        vant::onMainQueue([pane = vant::Retained<VantInstallation>::retain(self),
                           shown = vant::Retained<NSString>::retain(text), flow = package.flow, percentage] {
            [pane.get() updateProgressWithDoubleValue:[pane.get() barValueAt:percentage inFlow:flow]];
            [pane.get() updateInstallingTextField:shown.get()];
        });
    }
}

/// The bar's value when an update runs, by which time the chain may have gone on.
- (double)barValueAt:(double)percentage inFlow:(vant::InstallFlow)flow {
    return flow == vant::InstallFlow::Web ? vant::webBarValue(percentage, [self positionInFlow:flow])
                                          : mProgressindicatorValue;
}

- (NSString *)displayNameOfPackage:(const VantPackageRun &)package {
    const vant::DisplayName name = vant::displayNameOf(package.flow, vant::utf8(package.componentName));
    if (name.source == vant::DisplayName::Source::Itself)
        return package.componentName;
    NSString *text = vant::nsString(name.text);
    if (name.source == vant::DisplayName::Source::Text)
        return text;
    NSString *localized = [self localizedStringForKey:text];
    return localized == nil ? package.componentName : localized;
}

- (NSArray *)packagesOfFlow:(vant::InstallFlow)flow {
    return flow == vant::InstallFlow::Web ? mInstallCompArrayForSmartUpdate : mInstallCompArrayForCDUpdate;
}

- (vant::ListPosition)positionInFlow:(vant::InstallFlow)flow {
    return {.index = cdInstallIndex, .packages = [[self packagesOfFlow:flow] count]};
}

- (void)announceWhatFollowsInFlow:(vant::InstallFlow)flow {
    NSArray *packages = [self packagesOfFlow:flow];
    const vant::ChainStep step = vant::stepAfterPackage(
        flow, {.index = cdInstallIndex,
               .outcomes = [mInstalledPackageDict count],
               .packages = [packages count],
               .anyFailed = [[mInstalledPackageDict allValues] containsObject:VantOutcomeFailed] == YES});
    if (step.announcement == vant::Announcement::Nothing)
        return;
    [self trace:@"%@", vant::nsString(step.trace)];
    // Two records of one file name share an outcome, and a list that holds them runs past its end: the look-up raises
    // and ends the process. A list that can never complete must not look as if it had.
    id next = step.advances ? [packages objectAtIndex:static_cast<NSUInteger>(++cdInstallIndex)] : nil;
    [[NSNotificationCenter defaultCenter] postNotificationName:notificationName(step.announcement) object:next];
}

@end
