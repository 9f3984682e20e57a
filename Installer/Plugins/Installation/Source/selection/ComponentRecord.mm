#import "selection/ComponentRecord.h"

#import "base/Bridge.h"
#import "base/Locations.h"
#include "selection/ComponentCatalogue.hpp"

NSString *const VantLocationKey = @"LOCATION";
NSString *const VantTypeKey = @"TYPE";

NSString *const VantInstallerPathKey = @"installerpath";
NSString *const VantComponentNameKey = @"componentname";
NSString *const VantBDObjectKey = @"BDObject";

static void put(NSMutableDictionary *record, NSString *key, id value) {
    if (value != nil)
        [record setObject:value forKey:key];
}

NSMutableDictionary *VantMediaRecord(NSString *location, NSString *kind) {
    NSMutableDictionary *record = [NSMutableDictionary dictionaryWithCapacity:2];
    put(record, VantLocationKey, location);
    put(record, VantTypeKey, kind);
    return record;
}

NSMutableDictionary *VantWebRecord(NSString *installerPath, NSString *componentName, id origin) {
    NSMutableDictionary *record = [NSMutableDictionary dictionaryWithCapacity:3];
    put(record, VantInstallerPathKey, installerPath);
    put(record, VantComponentNameKey, componentName);
    put(record, VantBDObjectKey, origin);
    return record;
}

NSMutableDictionary *VantManualRecord(void) {
    return VantWebRecord(VantHostPackagePath(@"Manual"), vant::nsString(vant::manualKind), @"MANUAL");
}

NSMutableDictionary *VantUninstallerRecord(void) {
    return VantWebRecord(VantHostPackagePath(@"Uninstaller"), vant::nsString(vant::uninstallerKind), @"Uninstaller");
}
