#import "install/chain/VantInstallation+UnpackChain.h"

#import "base/Bridge.h"
#import "base/Locations.h"
#import "base/PropertyList.h"
#import "base/Retained.h"
#include "install/chain/ChainSteps.hpp"
#include "install/chain/ExpandedItem.hpp"
#import "install/chain/VantInstallation+InstallChain.h"
#import "install/status/VantInstallation+StatusLine.h"
#import "selection/ComponentRecord.h"
#import "selection/VantInstallation+PackageLists.h"
#import "selection/VantInstallation+WebList.h"
#import "shell/Notifications.h"
#import "shell/VantInstallation+HostLink.h"

#include <array>

static NSString *const countedMark = @"receiveunzipNoti";
static const int scanManagerCount = 4;

static NSString *setAsideFolder() {
    NSString *relative = [NSString stringWithFormat:@"%@/%@", @"Desktop", @"QuorvelPrinter"];
    return [NSHomeDirectory() stringByAppendingPathComponent:relative];
}

static BOOL exists(NSString *path) {
    return [[NSFileManager defaultManager] fileExistsAtPath:path];
}

// Failures are ignored: an item that is already there stays as it is.
static void copyToDesktop(NSString *folder, NSString *target) {
    NSFileManager *files = [NSFileManager defaultManager];
    [files createDirectoryAtPath:setAsideFolder() withIntermediateDirectories:YES attributes:nil error:nullptr];
    [files copyItemAtPath:folder toPath:target error:nullptr];
}

// An archive may hold a hundred thousand items, and most of them are passed over: names of usual length are looked at
// without an object made of them.
static vant::ExpandedItem classified(NSString *item) {
    std::array<char, 1024> bytes;
    if ([item getCString:bytes.data() maxLength:bytes.size() encoding:NSUTF8StringEncoding])
        return vant::classifyExpandedItem(bytes.data());
    return vant::classifyExpandedItem(vant::utf8(item));
}

@implementation VantInstallation (UnpackChain)

- (void)receiveunzipNotification:(NSNotification *)notification {
    if (![[notification name] isEqualToString:VantUnzipCompletedNotification])
        return;
    copyflag = 0;
    installflag = 0;
    NSDictionary *info = [notification userInfo];
    [self searchFolder:VantStringForKey(info, VantExpandedPathKey) ofDownload:[info objectForKey:VantBDObjectKey]];
    [unzipcountArr addObject:countedMark];
    [self endUnpackingAs:vant::unpackEnding({.expanded = [unzipcountArr count],
                                             .selected = [selectedarrXML count],
                                             .setAside = copyflag == 1,
                                             .desktopFolder = exists(setAsideFolder()) == YES})];
}

- (void)searchFolder:(NSString *)folder ofDownload:(id)download {
    if (folder == nil)
        return;
    // Items inside a package or an application are listed, and searched, too.
    for (NSString *item in [[NSFileManager defaultManager] subpathsAtPath:folder]) {
        const vant::ExpandedItem found = classified(item);
        if (found.path == vant::ExpandedPath::NotExamined)
            continue;
        @autoreleasepool {
            [self takeItem:item foundAs:found ofFolder:folder download:download];
        }
    }
}

- (void)takeItem:(NSString *)item
         foundAs:(const vant::ExpandedItem &)found
        ofFolder:(NSString *)folder
        download:(id)download {
    NSString *base = found.path == vant::ExpandedPath::TildeExpanded ? [folder stringByExpandingTildeInPath] : folder;
    vant::hold(documentsDirectoryPath, [base stringByAppendingPathComponent:item]);
    switch (found.action) {
    case vant::ExpandedAction::Skip:
        break;
    case vant::ExpandedAction::InstallScanManager:
        scannerCount = scanManagerCount;
        [[fallthrough]];
    case vant::ExpandedAction::Install:
        [self addPackage:VantWebRecord(documentsDirectoryPath, [item lastPathComponent], download)
                  inFlow:vant::Flow::Web];
        break;
    case vant::ExpandedAction::SetAside:
    case vant::ExpandedAction::SetAsideAtOnce:
        [self setAside:folder lookingFirst:found.action == vant::ExpandedAction::SetAside];
        break;
    }
}

- (void)setAside:(NSString *)folder lookingFirst:(BOOL)looking {
    copyflag = 1;
    NSString *target = [setAsideFolder() stringByAppendingPathComponent:[folder lastPathComponent]];
    if (!looking || !exists(target))
        copyToDesktop(folder, target);
}

- (void)endUnpackingAs:(vant::UnpackEnding)ending {
    switch (ending) {
    case vant::UnpackEnding::MoreToCome:
        return;
    case vant::UnpackEnding::ShowSetAside:
        return [self showSetAside];
    case vant::UnpackEnding::SetAsideMissing:
        [[NSFileManager defaultManager] removeItemAtPath:setAsideFolder() error:nullptr];
        return;
    case vant::UnpackEnding::Install:
        return [self startInstallation];
    }
}

- (void)showSetAside {
    [self enableHostButton2:YES];
    [self showSetAsideLook];
    mNonFlatInstaller = YES;
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
    [[NSWorkspace sharedWorkspace] openFile:setAsideFolder()];
#pragma clang diagnostic pop
    if (installflag == 1)
        return;
    [[NSFileManager defaultManager] removeItemAtPath:VantTemporaryPath(VantWebSelectionFile) error:nullptr];
}

- (void)startInstallation {
    [self showInstallingLook];
    if ([self packageCountInFlow:vant::Flow::Web] > 0)
        [self completeWebList];
    [self scheduleWebInstallation];
}

@end
