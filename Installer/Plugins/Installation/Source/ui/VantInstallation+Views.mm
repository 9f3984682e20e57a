#import "ui/VantInstallation+Views.h"

#import "base/Bridge.h"
#import "base/PropertyList.h"
#import "base/Retained.h"
#import "download/BDObject.h"
#import "download/DownloadNotifications.h"
#import "download/VantInstallation+WebDriver.h"
#import "install/chain/InstallNotifications.h"
#import "install/chain/VantInstallation+UnpackChain.h"
#import "selection/ComponentRecord.h"
#include "selection/MediaList.hpp"
#import "shell/VantInstallation+UserSettings.h"
#import "ui/VantInstallation+AdministratorRights.h"

static void renew(NSMutableArray *&list) {
    vant::hold(list, [NSMutableArray array]);
}

/// The selection's entry for a row, nil when the selection is shorter than the rows.
static id entryAtIndex(NSArray *selection, NSUInteger index) {
    return index < [selection count] ? [selection objectAtIndex:index] : nil;
}

static vant::MediaComponent componentOfEntry(id entry) {
    return {vant::optionalUTF8(VantEntryText(entry, VantLocationKey)),
            vant::optionalUTF8(VantEntryText(entry, VantTypeKey))};
}

static std::optional<std::string> hostPackagePath(NSString *name) {
    return vant::optionalUTF8([[NSBundle mainBundle] pathForResource:name ofType:@"pkg"]);
}

@implementation VantInstallation (Views)

- (void)showNormalView {
    [mObserver setIsButton2Enabled:NO];
    [self resetBookkeeping];
    renew(installedcountArr);
    for (NSUInteger i = 0; i < [selectedarrXML count]; ++i)
        [self addRow:nil];
    [self observe:VantWebDownloadStartNotification with:@selector(ReNotification:)];
    if (![self obtainAdministratorRights])
        return;
    [self startSelectedDownloads];
    // The downloads announce themselves through the run loop, so handlers registered only now miss nothing.
    [self observe:VantFindInstallFileNotification with:@selector(receiveNotification:)];
    [self observe:VantDownloadInfoNotification with:@selector(receivedownloadNotification:)];
    [self observe:VantDownloadCompletedNotification with:@selector(receivedownloadNotification:)];
    [self observe:VantUnzipCompletedNotification with:@selector(receiveunzipNotification:)];
    [self observe:VantSUInstallCompleteNotification with:@selector(receiveNotification1:)];
    [self observe:VantInstallNextSUComponentNotification with:@selector(receiveNotification1:)];
}

- (void)showNormalViewforCDInstallation {
    [mObserver setIsButton2Enabled:NO];
    [self resetBookkeeping];
    renew(installedcountArr1);
    for (NSUInteger i = 0; i < [selectedarrXML1 count]; ++i)
        [self addRow1:nil];
    [self observe:VantWebDownloadStartNotification with:@selector(ReNotification:)];
    if (![self obtainAdministratorRights])
        return;
    [self takeUpMediaSelection];
    [self addMediaComponentsBesideSelection];
    [self countSelectedComponents];
    [self observe:VantCDInstallCompleteNotification with:@selector(receiveNotification1:)];
    [self observe:VantInstallNextCDComponentNotification with:@selector(receiveNotification1:)];
}

- (void)resetBookkeeping {
    renew(unzipcountArr);
    renew(downloadcompletedcountArr);
    renew(myDownloadinfoArray);
    vant::hold(objIndexArray, [NSArray array]);
    renew(scancounts);
}

- (void)observe:(NSString *)name with:(SEL)handler {
    [[NSNotificationCenter defaultCenter] addObserver:self selector:handler name:name object:nil];
}

- (void)startSelectedDownloads {
    renew(selectedmodellocations);
    for (NSUInteger i = 0; i < [objects count]; ++i) {
        if ([[objects objectAtIndex:i] getCheckBTStatus] != 1)
            continue;
        NSString *address = VantEntryText(entryAtIndex(selectedarrXML, i), VantLocationKey);
        vant::hold(locationstr, [[address copy] autorelease]);
        [self webDriverDownloading:locationstr];
        [self countLocation];
    }
    [self countSelectedComponents];
    renew(myMutableArray);
}

- (void)takeUpMediaSelection {
    renew(selectedmodellocations);
    for (NSUInteger i = 0; i < [objects1 count]; ++i) {
        id entry = entryAtIndex(selectedarrXML1, i);
        NSString *location = VantEntryText(entry, VantLocationKey);
        vant::hold(locationstr, [[location copy] autorelease]);
        [self countLocation];
        [mInstallCompArrayForCDUpdate addObject:VantMediaRecord(location, VantEntryText(entry, VantTypeKey))];
    }
}

// A component without a location is taken up like any other, but there is nothing to note for it.
- (void)countLocation {
    if (locationstr != nil)
        [selectedmodellocations addObject:locationstr];
    [mObserver setIsButton2Enabled:NO];
}

- (void)countSelectedComponents {
    selectedcomponentCount = static_cast<int>([selectedmodellocations count]);
    vant::hold(objIndexArray, [[myDownloadinfoArray copy] autorelease]);
}

- (void)addMediaComponentsBesideSelection {
    vant::MediaSources sources;
    for (id entry in selectedarrXML1)
        sources.selection.push_back(componentOfEntry(entry));
    sources.uninstaller = hostPackagePath(@"Uninstaller");
    sources.secondScanDriver = vant::optionalUTF8([self secondScanDriverLocation]);
    sources.manual = hostPackagePath(@"Manual");
    sources.manualWanted = [self isManualWanted];
    for (const vant::MediaComponent &component : vant::addedMediaComponents(sources))
        [mInstallCompArrayForCDUpdate
            addObject:VantMediaRecord(vant::nsStringOrNil(component.location), vant::nsStringOrNil(component.kind))];
}

- (void)showBackPaneView {
    mAuthCancelledOrError = YES;
    // Asked for as the host asks; the answer is the host's to take when it asks itself.
    [self performButton3Action];
}

- (void)showAbnormalView {
    [mObserver setIsButton2Enabled:NO];
}

// The web rows have no table of the pane's own to refresh, and no row is ever taken away: the asymmetry with the media
// rows below is part of the interface.
- (void)addRow:(id)sender {
    (void)sender;
    [objects addObject:[[[BDObject alloc] init] autorelease]];
}

- (void)removeRow:(id)sender {
    (void)sender;
}

- (void)addRow1:(id)sender {
    (void)sender;
    [objects1 addObject:[[[BDObject alloc] init] autorelease]];
    [list1 reloadData];
}

- (void)removeRow1:(id)sender {
    (void)sender;
    [objects1 removeObjectAtIndex:static_cast<NSUInteger>([list1 selectedRow])];
    [list1 reloadData];
}

- (void)receiveNotification:(NSNotification *)notification {
    (void)notification;
}

@end
