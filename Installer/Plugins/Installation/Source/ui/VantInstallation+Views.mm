#import "ui/VantInstallation+Views.h"

#import "base/Retained.h"
#import "download/BDObject.h"
#import "download/VantInstallation+WebDriver.h"
#import "install/chain/VantInstallation+InstallChain.h"
#import "install/chain/VantInstallation+UnpackChain.h"
#import "selection/VantInstallation+MediaList.h"
#import "shell/Notifications.h"
#import "shell/VantInstallation+HostLink.h"
#import "ui/VantInstallation+AdministratorRights.h"

#include <initializer_list>

/// What the pane hears, and by which operation.
struct Handler {
    NSString *notification;
    SEL operation;
};

@implementation VantInstallation (Views)

- (void)showNormalView {
    [self enableHostButton2:NO];
    [self resetBookkeeping];
    vant::renew(installedcountArr);
    for (NSUInteger i = 0; i < [selectedarrXML count]; ++i)
        [self addRow:nil];
    [self hear:{{VantWebDownloadStartNotification, @selector(ReNotification:)}}];
    if (![self obtainAdministratorRights])
        return;
    [self startSelectedDownloads];
    [self countSelectedComponents];
    vant::renew(myMutableArray);
    // The downloads announce themselves through the run loop, so handlers registered only now miss nothing.
    [self hear:{
                   {VantFindInstallFileNotification, @selector(receiveNotification:)},
                   {VantDownloadInfoNotification, @selector(receivedownloadNotification:)},
                   {VantDownloadCompletedNotification, @selector(receivedownloadNotification:)},
                   {VantUnzipCompletedNotification, @selector(receiveunzipNotification:)},
                   {VantSUInstallCompleteNotification, @selector(receiveNotification1:)},
                   {VantInstallNextSUComponentNotification, @selector(receiveNotification1:)},
               }];
}

- (void)showNormalViewforCDInstallation {
    [self enableHostButton2:NO];
    [self resetBookkeeping];
    vant::renew(installedcountArr1);
    for (NSUInteger i = 0; i < [selectedarrXML1 count]; ++i)
        [self addRow1:nil];
    [self hear:{{VantWebDownloadStartNotification, @selector(ReNotification:)}}];
    if (![self obtainAdministratorRights])
        return;
    [self listMediaSelection];
    [self listMediaComponentsBesideSelection];
    [self countSelectedComponents];
    [self hear:{
                   {VantCDInstallCompleteNotification, @selector(receiveNotification1:)},
                   {VantInstallNextCDComponentNotification, @selector(receiveNotification1:)},
               }];
}

- (void)hear:(std::initializer_list<Handler>)handlers {
    for (const Handler &handler : handlers)
        [[NSNotificationCenter defaultCenter] addObserver:self
                                                 selector:handler.operation
                                                     name:handler.notification
                                                   object:nil];
}

- (void)showBackPaneView {
    mAuthCancelledOrError = YES;
    // Asked for as the host asks; the answer is the host's to take when it asks itself.
    [self performButton3Action];
}

- (void)showAbnormalView {
    [self enableHostButton2:NO];
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
