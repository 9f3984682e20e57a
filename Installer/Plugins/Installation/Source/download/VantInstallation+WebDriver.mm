#import "download/VantInstallation+WebDriver.h"

#import "base/Bridge.h"
#import "base/Locations.h"
#import "base/MainQueue.h"
#import "base/PropertyList.h"
#import "base/Retained.h"
#import "download/ArchiveDownload.h"
#include "download/DownloadNames.hpp"
#import "download/DownloadNotifications.h"
#include "download/MediaMerge.hpp"
#import "install/chain/InstallNotifications.h"
#import "install/package/VantInstallation+PackageInstaller.h"
#import "install/tasks/VantInstallation+ShellTasks.h"
#import "selection/ComponentRecord.h"
#import "selection/VantInstallation+InstallOrder.h"
#import "shell/VantInstallation+UserSettings.h"

namespace {

void detach(SEL operation, id target, id record) {
    [NSThread detachNewThreadSelector:operation toTarget:target withObject:record];
}

NSString *expandedFolder(NSString *archive) {
    NSString *name = vant::nsString(vant::extractFolderName(vant::utf8(archive)));
    return [NSString stringWithFormat:@"%@/%@", vant::downloadFolder(), name];
}

} // namespace

@implementation VantInstallation (WebDriver)

- (void)webDriverDownloading:(NSString *)address {
    nRetry = 0;
    const vant::DownloadFields fields = vant::downloadFieldsOf(self);
    vant::openDownload(fields, address);
    NSMutableDictionary *info = [NSMutableDictionary dictionaryWithCapacity:10];
    [info setObject:self forKey:VantTestKey];
    vant::hold(downloadindexDic, static_cast<NSDictionary *>(info));
    // Without effect: the pane, unlike a row, never creates the list, and a list would keep every download alive.
    [TestArray addObject:filedownload];
    [[NSNotificationCenter defaultCenter] postNotificationName:VantWebDownloadStartNotification
                                                        object:nil
                                                      userInfo:info];
    vant::placeDownload(fields);
}

- (void)ReNotification:(NSNotification *)notification {
    if (![[notification name] isEqualToString:VantWebDownloadStartNotification])
        return;
    id started = [[notification userInfo] objectForKey:VantTestKey];
    if (started != nil)
        [myDownloadinfoArray addObject:started];
}

- (void)receivedownloadNotification:(NSNotification *)notification {
    if ([[notification name] isEqualToString:VantDownloadInfoNotification])
        [self noteDownload:[notification userInfo]];
    if ([[notification name] isEqualToString:VantDownloadCompletedNotification])
        [self takeFinishedDownload:[notification userInfo]];
}

- (void)noteDownload:(NSDictionary *)info {
    [mVTPackageInstallationProgDummy setHidden:YES];
    [mVTPackageDownloadProg setHidden:NO];
    NSString *text = [NSString stringWithFormat:@"%@...", [self localizedStringForKey:@"Downloading"]];
    [mProgressInfoTF setStringValue:text];
    // An entry for each, even an empty one: the position in the list is what counts.
    [myMutableArray addObject:info == nil ? @{} : info];
}

- (void)takeFinishedDownload:(NSDictionary *)info {
    // Finished downloads never carry a name; those that read the log expect the empty brackets.
    NSString *component = VantStringForKey(info, VantComponentNameKey);
    [self trace:@"Download complete...:[%@]", component == nil ? @"" : component];
    [downloadcompletedcountArr addObject:VantDownloadCompletedNotification];
    // By position, not by file: archives are expanded in the order in which their files were created, whichever
    // download has actually finished.
    const auto position = static_cast<NSUInteger>(cdDownloadIndex);
    NSDictionary *created = position < [myMutableArray count] ? [myMutableArray objectAtIndex:position] : nil;
    id delegate = [info objectForKey:VantDownloadKey];
    if (created == nil || [created objectForKey:VantDownloadKey] != delegate)
        return;
    ++cdDownloadIndex;
    [self expand:VantStringForKey(created, VantDownloadPathKey) forDelegate:delegate];
}

- (void)expand:(NSString *)archive forDelegate:(id)delegate {
    NSMutableDictionary *info = [NSMutableDictionary dictionaryWithCapacity:3];
    if (archive != nil) {
        NSString *folder = expandedFolder(archive);
        if (vant::archiveKind(vant::utf8(archive)) == vant::ArchiveKind::Zip)
            [self unzip:archive ExtractPath:folder];
        else
            [self ungz:archive ExtractPath:folder];
        [info setObject:folder forKey:VantExpandedPathKey];
    }
    if (delegate != nil)
        [info setObject:delegate forKey:VantBDObjectKey];
    [[NSNotificationCenter defaultCenter] postNotificationName:VantUnzipCompletedNotification object:nil userInfo:info];
}

- (void)InstallWebComponents:(id)ignored {
    (void)ignored;
    [self mergeMediaSelection];
    if ([mInstallCompArrayForSmartUpdate count] == 0)
        return;
    [VantInstallation sortMutableListOfComponentsToInstallAsPerRequiredOrder:mInstallCompArrayForSmartUpdate
                                                               foInstallType:@"SmartUpdate"];
    [self filteroutRedundantComponentsforSmartUpdate];
    [self filteroutScanLegacyComponentsforSmartUpdate];
    // Behind everything else, whatever the order says.
    if (![self addUninstallerPackageIfNotPresent])
        [mInstallCompArrayForSmartUpdate
            addObject:VantHostPackageRecord(@"Uninstaller", VantUninstallerKind, VantUninstallerOrigin)];
    [self trace:@"Installing start for WEB Data ===>:[%@]", mInstallCompArrayForSmartUpdate];
    detach(@selector(installCompoentAtPath:), self,
           [mInstallCompArrayForSmartUpdate objectAtIndex:static_cast<NSUInteger>(cdInstallIndex)]);
}

- (void)mergeMediaSelection {
    std::vector<vant::MediaComponent> media;
    for (id entry in VantArrayFromFile(VantTemporaryPath(VantMediaSelectionFile)))
        media.push_back({vant::optionalUTF8(VantEntryText(entry, VantLocationKey)),
                         vant::optionalUTF8(VantEntryText(entry, VantTypeKey))});
    std::vector<std::optional<std::string>> listed;
    for (NSDictionary *record in mInstallCompArrayForSmartUpdate)
        listed.push_back(vant::optionalUTF8([record objectForKey:VantInstallerPathKey]));
    const auto second = vant::optionalUTF8([self secondScanDriverLocation]);
    for (const vant::MergedRecord &added : vant::mergeMedia(media, listed, second))
        [mInstallCompArrayForSmartUpdate addObject:VantWebRecord(vant::nsStringOrNil(added.installerPath),
                                                                 vant::nsStringOrNil(added.componentName), nil)];
}

- (int)getErrcodeStr {
    return errcodeStr;
}

- (void)receiveNotification1:(NSNotification *)notification {
    NSString *name = [notification name];
    if ([name isEqualToString:VantInstallNextSUComponentNotification])
        detach(@selector(installCompoentAtPath:), self, [notification object]);
    if ([name isEqualToString:VantSUInstallCompleteNotification])
        [self finishInstallation];
    if ([name isEqualToString:VantInstallNextCDComponentNotification])
        detach(@selector(installCDComponentAtPath:), self, [notification object]);
    if ([name isEqualToString:VantCDInstallCompleteNotification])
        [self finishInstallation];
}

- (void)finishInstallation {
    [mObserver setIsButton2Enabled:YES];
    [self showFinishText:[self hostStringForKey:@"FINISH.TITLE"]];
    if ([mObserver respondsToSelector:@selector(continueToNextPlugin)])
        [mObserver continueToNextPlugin];
}

- (void)showFinishText:(NSString *)text {
    const auto bar = vant::Retained<NSProgressIndicator>::retain(mVTPackageInstallationProg);
    const auto line = vant::Retained<NSTextField>::retain(mProgressInfoTF);
    const auto shown = vant::Retained<NSString>::retain(text == nil ? @"" : text);
    const auto show = [=, owner = vant::Retained<VantInstallation>::retain(self)] {
        [bar.get() stopAnimation:owner.get()];
        [line.get() setStringValue:shown.get()];
    };
    // From an installer thread the text has to queue up behind the progress texts that the thread sent before, or one
    // of them would be the last to show.
    if ([NSThread isMainThread])
        show();
    else
        vant::onMainQueue(show);
}

@end
