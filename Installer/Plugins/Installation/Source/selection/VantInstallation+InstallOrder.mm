#import "selection/VantInstallation+InstallOrder.h"

#import "base/Bridge.h"
#import "base/PropertyList.h"
#import "selection/ComponentRecord.h"
#include "selection/InstallOrder.hpp"
#include "selection/SmartUpdateFilter.hpp"
#import "selection/VantInstallation+PackageLists.h"

#include <vector>

using Texts = std::vector<std::optional<std::string>>;

/// The records' strings under a key; nothing for a record that has none.
static Texts textsForKey(NSArray *records, NSString *key) {
    Texts texts;
    texts.reserve([records count]);
    for (id record in records)
        texts.push_back(vant::optionalUTF8(VantStringForKey(record, key)));
    return texts;
}

static NSString *nameKey(vant::RecordName name) {
    return name == vant::RecordName::type ? VantTypeKey : VantComponentNameKey;
}

/// Leaves the records at the positions out, which ascend. One may be tempted to use `removeObjectsAtIndexes:`, but that
/// moves the rest of the list once for each of them.
static void removePositions(NSMutableArray *records, const std::vector<std::size_t> &positions) {
    NSMutableArray *kept = [NSMutableArray arrayWithCapacity:[records count]];
    auto dropped = positions.begin();
    for (NSUInteger i = 0; i < [records count]; ++i) {
        if (dropped != positions.end() && *dropped == i)
            ++dropped;
        else
            [kept addObject:[records objectAtIndex:i]];
    }
    vant::withList(records, [kept](NSMutableArray *list) { [list setArray:kept]; });
}

@implementation VantInstallation (InstallOrder)

+ (void)sortMutableListOfComponentsToInstallAsPerRequiredOrder:(NSMutableArray *)components
                                                 foInstallType:(NSString *)installType {
    const vant::RecordName name = vant::recordName(vant::utf8(installType));
    if (name == vant::RecordName::none)
        return;
    NSMutableArray *ordered = [NSMutableArray arrayWithCapacity:[components count]];
    for (const std::size_t position : vant::installOrder(textsForKey(components, nameKey(name))))
        [ordered addObject:[components objectAtIndex:position]];
    vant::withList(components, [ordered](NSMutableArray *list) { [list setArray:ordered]; });
}

- (void)filteroutRedundantComponentsforSmartUpdate {
    removePositions(mInstallCompArrayForSmartUpdate,
                    vant::redundantRecords(textsForKey(mInstallCompArrayForSmartUpdate, VantInstallerPathKey)));
}

- (void)filteroutScanLegacyComponentsforSmartUpdate {
    removePositions(mInstallCompArrayForSmartUpdate,
                    vant::legacyScanRecords(textsForKey(mInstallCompArrayForSmartUpdate, VantComponentNameKey)));
}

- (BOOL)addUninstallerPackageIfNotPresent {
    return vant::holdsUninstaller(textsForKey(mInstallCompArrayForSmartUpdate, VantInstallerPathKey));
}

@end
