#import "install/chain/VantInstallation+InstallChain.h"

#import "base/Bridge.h"
#import "base/PropertyList.h"
#include "base/SharedValue.hpp"
#include "install/chain/ChainSteps.hpp"
#import "install/package/VantInstallation+PackageInstaller.h"
#import "install/status/VantInstallation+RunEvents.h"
#import "install/status/VantInstallation+StatusLine.h"
#import "selection/VantInstallation+InstallOrder.h"
#import "selection/VantInstallation+PackageLists.h"
#import "selection/VantInstallation+WebList.h"
#import "shell/Notifications.h"
#import "shell/VantInstallation+HostLink.h"

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

@implementation VantInstallation (InstallChain)

- (void)InstallCDComponents:(id)ignored {
    (void)ignored;
    if ([mInstallCompArrayForCDUpdate count] == 0)
        return;
    [self showInstallingLook];
    [VantInstallation sortMutableListOfComponentsToInstallAsPerRequiredOrder:mInstallCompArrayForCDUpdate
                                                               foInstallType:@"CD"];
    [self trace:@"Installing start for CD Data ===>:[%@]", mInstallCompArrayForCDUpdate];
    [self startFirstPackageInFlow:vant::Flow::Media];
}

- (void)scheduleWebInstallation {
    [self performSelector:@selector(InstallWebComponents:)
               withObject:mInstallCompArrayForSmartUpdate
               afterDelay:VantInstallationDelay];
}

- (void)InstallWebComponents:(id)ignored {
    (void)ignored;
    [self mergeMediaSelection];
    if ([self packageCountInFlow:vant::Flow::Web] == 0)
        return;
    [self arrangeWebList];
    [self trace:@"Installing start for WEB Data ===>:[%@]", mInstallCompArrayForSmartUpdate];
    [self startFirstPackageInFlow:vant::Flow::Web];
}

/// The position is the process's own: after an earlier flow the list starts where that one stopped.
- (void)startFirstPackageInFlow:(vant::Flow)flow {
    [self runWillInstall];
    const auto first = static_cast<NSUInteger>(vant::sharedValue(cdInstallIndex));
    [self startThreadForPackage:[self packageInFlow:flow atIndex:first] inFlow:flow];
}

- (void)startThreadForPackage:(id)record inFlow:(vant::Flow)flow {
    [NSThread detachNewThreadSelector:flow == vant::Flow::Web ? @selector(installCompoentAtPath:)
                                                              : @selector(installCDComponentAtPath:)
                             toTarget:self
                           withObject:record];
}

/// Looks at every outcome, so that only the end of a list asks.
- (BOOL)hasAnyPackageFailed {
    return [[mInstalledPackageDict allValues] containsObject:VantOutcomeWord(vant::InstallOutcome::Failed)];
}

- (void)announceWhatFollowsInFlow:(vant::Flow)flow {
    const NSUInteger outcomes = [mInstalledPackageDict count];
    const NSUInteger packages = [self packageCountInFlow:flow];
    const vant::ChainStep step =
        vant::stepAfterPackage(flow, {.index = vant::sharedValue(cdInstallIndex),
                                      .outcomes = outcomes,
                                      .packages = packages,
                                      .anyFailed = vant::isAtEnd(outcomes, packages) && [self hasAnyPackageFailed]});
    if (step.announcement == vant::Announcement::Nothing)
        return;
    [self trace:@"%@", vant::nsString(step.trace)];
    // Two records of one file name share an outcome, and a list that holds them runs past its end: the look-up raises
    // and ends the process. A list that can never complete must not look as if it had.
    id next = nil;
    if (step.advances)
        next = [self packageInFlow:flow atIndex:static_cast<NSUInteger>(vant::incrementSharedValue(cdInstallIndex))];
    [[NSNotificationCenter defaultCenter] postNotificationName:notificationName(step.announcement) object:next];
}

- (void)receiveNotification1:(NSNotification *)notification {
    NSString *name = [notification name];
    if ([name isEqualToString:VantInstallNextSUComponentNotification])
        [self startThreadForPackage:[notification object] inFlow:vant::Flow::Web];
    if ([name isEqualToString:VantSUInstallCompleteNotification])
        [self finishInstallation];
    if ([name isEqualToString:VantInstallNextCDComponentNotification])
        [self startThreadForPackage:[notification object] inFlow:vant::Flow::Media];
    if ([name isEqualToString:VantCDInstallCompleteNotification])
        [self finishInstallation];
}

- (void)finishInstallation {
    [self enableHostButton2:YES];
    [self showFinishedLook];
    [self tellHostToContinue];
}

@end
