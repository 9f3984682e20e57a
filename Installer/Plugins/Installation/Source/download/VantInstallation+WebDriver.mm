#import "download/VantInstallation+WebDriver.h"

#import "base/Bridge.h"
#import "base/PropertyList.h"
#import "base/Retained.h"
#import "download/ArchiveDownload.h"
#import "download/BDObject.h"
#import "download/VantInstallation+Downloads.h"
#import "install/status/VantInstallation+StatusLine.h"
#include "install/tasks/Archives.hpp"
#import "install/tasks/VantInstallation+ShellTasks.h"
#import "selection/ComponentRecord.h"
#import "selection/SelectionEntry.h"
#import "selection/VantInstallation+MediaList.h"
#import "shell/Notifications.h"

static void post(NSString *name, NSDictionary *info) {
    [[NSNotificationCenter defaultCenter] postNotificationName:name object:nil userInfo:info];
}

@implementation VantInstallation (WebDriver)

- (void)startSelectedDownloads {
    vant::renew(selectedmodellocations);
    for (NSUInteger i = 0; i < [objects count]; ++i) {
        if ([[objects objectAtIndex:i] getCheckBTStatus] != 1)
            continue;
        [self setCurrentLocation:VantEntryText(VantEntryAtIndex(selectedarrXML, i), VantLocationKey)];
        [self webDriverDownloading:locationstr];
        [self countCurrentComponent];
    }
}

- (void)webDriverDownloading:(NSString *)address {
    nRetry = 0;
    const vant::DownloadFields fields = vant::downloadFields(self);
    vant::openDownload(fields, address);
    NSMutableDictionary *info = [NSMutableDictionary dictionaryWithCapacity:10];
    [info setObject:self forKey:VantTestKey];
    vant::hold(downloadindexDic, static_cast<NSDictionary *>(info));
    // Without effect: the pane, unlike a row, never creates the list, and a list would keep every download alive.
    [TestArray addObject:filedownload];
    post(VantWebDownloadStartNotification, info);
    vant::placeDownload(fields);
    [self noteStartedDownload];
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
        [self noteCreatedFile:[notification userInfo]];
    if ([[notification name] isEqualToString:VantDownloadCompletedNotification])
        [self takeFinishedDownload:[notification userInfo]];
}

- (void)noteCreatedFile:(NSDictionary *)info {
    [self showDownloadingLook];
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
    NSDictionary *created = [self nextCreatedFile];
    id delegate = [info objectForKey:VantDownloadKey];
    if (created == nil || [created objectForKey:VantDownloadKey] != delegate)
        return;
    ++cdDownloadIndex;
    [self expandArchive:VantStringForKey(created, VantDownloadPathKey) ofDelegate:delegate];
}

- (NSDictionary *)nextCreatedFile {
    return VantEntryAtIndex(myMutableArray, static_cast<NSUInteger>(cdDownloadIndex));
}

- (NSString *)pathToExpandNext {
    return VantStringForKey([self nextCreatedFile], VantDownloadPathKey);
}

- (void)expandArchive:(NSString *)archive ofDelegate:(id)delegate {
    NSMutableDictionary *info = [NSMutableDictionary dictionaryWithCapacity:3];
    if (archive != nil)
        [info setObject:[self folderOfExpandedArchive:archive] forKey:VantExpandedPathKey];
    if (delegate != nil)
        [info setObject:delegate forKey:VantBDObjectKey];
    post(VantUnzipCompletedNotification, info);
}

- (NSString *)folderOfExpandedArchive:(NSString *)archive {
    const std::string path = vant::utf8(archive);
    NSString *name = vant::nsString(vant::extractFolderName(path));
    NSString *folder = [NSString stringWithFormat:@"%@/%@", vant::downloadFolder(), name];
    if (vant::archiveKind(path) == vant::ArchiveKind::Zip)
        [self unzip:archive ExtractPath:folder];
    else
        [self ungz:archive ExtractPath:folder];
    return folder;
}

- (int)getErrcodeStr {
    return errcodeStr;
}

@end
