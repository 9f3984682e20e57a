#import "selection/VantInstallation+WebList.h"

#import "base/Bridge.h"
#import "base/Locations.h"
#import "base/PropertyList.h"
#import "selection/ComponentRecord.h"
#include "selection/MediaMerge.hpp"
#import "selection/SelectionEntry.h"
#import "selection/VantInstallation+InstallOrder.h"
#import "selection/VantInstallation+PackageLists.h"
#import "shell/VantInstallation+UserSettings.h"

@implementation VantInstallation (WebList)

- (void)completeWebList {
    if ([self isManualWanted])
        [self addPackage:VantManualRecord() inFlow:vant::Flow::Web];
    [self addUninstaller];
}

- (void)addUninstaller {
    [self addPackage:VantUninstallerRecord() inFlow:vant::Flow::Web];
}

- (void)mergeMediaSelection {
    std::vector<vant::MediaComponent> media;
    for (id entry in VantArrayFromFile(VantTemporaryPath(VantMediaSelectionFile)))
        media.push_back(VantMediaComponentOfEntry(entry));
    std::vector<std::optional<std::string>> listed;
    for (NSDictionary *record in mInstallCompArrayForSmartUpdate)
        listed.push_back(vant::optionalUTF8([record objectForKey:VantInstallerPathKey]));
    const auto second = vant::optionalUTF8([self secondScanDriverLocation]);
    for (const vant::MergedRecord &added : vant::mergeMedia(media, listed, second))
        [self addPackage:VantWebRecord(vant::nsStringOrNil(added.installerPath),
                                       vant::nsStringOrNil(added.componentName), nil)
                  inFlow:vant::Flow::Web];
}

- (void)arrangeWebList {
    [VantInstallation sortMutableListOfComponentsToInstallAsPerRequiredOrder:mInstallCompArrayForSmartUpdate
                                                               foInstallType:@"SmartUpdate"];
    [self filteroutRedundantComponentsforSmartUpdate];
    [self filteroutScanLegacyComponentsforSmartUpdate];
    // Always last, whatever the required order.
    if (![self addUninstallerPackageIfNotPresent])
        [self addUninstaller];
}

@end
