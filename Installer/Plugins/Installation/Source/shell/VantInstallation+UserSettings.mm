#import "VantInstallation+UserSettings.h"

#import "PropertyList.h"
#import "RecordKeys.h"
#import "SettingsKeys.h"
#import "WorkingFolder.h"

@implementation VantInstallation (UserSettings)

- (NSMutableDictionary *)loadUserSettingsFile {
    return VantDictionaryFromFile(mUserOptionsFilePath5);
}

- (void)applySwitchesOfSettings:(NSDictionary *)settings {
    mSmartUpdate = [VantStringForKey(settings, VantSmartUpdateKey) isEqualToString:@"1"] ? 1 : 0;
    mWebError = [VantStringForKey(settings, VantWebErrorKey) isEqualToString:@"1"] ? 1 : 0;
    VantInstallationDebugFlag = [VantStringForKey(settings, VantDebugKey) isEqualToString:@"debug_on"];
}

- (NSString *)secondScanDriverLocation {
    NSDictionary *packages = VantDictionaryForKey([self loadUserSettingsFile], VantPackagesInfoKey);
    return VantStringForKey(VantDictionaryForKey(packages, VantScanDriver1Key), VantLocationKey);
}

- (BOOL)isManualWanted {
    NSDictionary *settings = [self loadUserSettingsFile];
    if (![VantStringForKey(settings, VantWithoutConnectionKey) isEqualToString:@"no"])
        return NO;
    id models = [settings objectForKey:VantModelsKey];
    // Hosts store the names as an array or as the keys of a dictionary; enumeration yields the names either way.
    if (![models isKindOfClass:[NSArray class]] && ![models isKindOfClass:[NSDictionary class]])
        return NO;
    for (id model in models) {
        if (![model isKindOfClass:[NSString class]])
            continue;
        NSString *folder = [VantMediaRoot() stringByAppendingFormat:@"/MANUAL/%@", model];
        if ([[NSFileManager defaultManager] fileExistsAtPath:folder])
            return YES;
    }
    return NO;
}

@end
