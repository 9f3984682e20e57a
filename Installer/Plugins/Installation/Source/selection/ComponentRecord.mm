#import "selection/ComponentRecord.h"

NSString *const VantLocationKey = @"LOCATION";
NSString *const VantTypeKey = @"TYPE";

NSString *const VantInstallerPathKey = @"installerpath";
NSString *const VantComponentNameKey = @"componentname";
NSString *const VantBDObjectKey = @"BDObject";
NSString *const VantManualOrigin = @"MANUAL";
NSString *const VantUninstallerOrigin = @"Uninstaller";

NSString *const VantScanDriverKind = @"Scan Driver";
NSString *const VantUninstallerKind = @"Printer Software Uninstaller";
NSString *const VantManualKind = @"User's Guide";

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

NSMutableDictionary *VantHostPackageRecord(NSString *resource, NSString *componentName, NSString *origin) {
    NSString *path = [[NSBundle mainBundle] pathForResource:resource ofType:@"pkg"];
    return VantWebRecord(path, componentName, origin);
}
