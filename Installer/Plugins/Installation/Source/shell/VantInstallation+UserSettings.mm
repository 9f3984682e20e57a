#import "shell/VantInstallation+UserSettings.h"

#import "base/Bridge.h"
#import "base/Locations.h"
#import "base/PropertyList.h"
#import "shell/SettingsKeys.h"
#include "shell/UserSettings.hpp"

static std::optional<std::string> textForKey(NSDictionary *settings, NSString *key) {
    return vant::optionalUTF8(VantStringForKey(settings, key));
}

@implementation VantInstallation (UserSettings)

- (NSMutableDictionary *)loadUserSettingsFile {
    return VantDictionaryFromFile(mUserOptionsFilePath5);
}

- (void)applySwitchesOfSettings:(NSDictionary *)settings {
    const vant::SettingsSwitches switches =
        vant::settingsSwitches(textForKey(settings, VantSmartUpdateKey), textForKey(settings, VantWebErrorKey),
                               textForKey(settings, VantDebugKey));
    mSmartUpdate = switches.smartUpdate ? 1 : 0;
    mWebError = switches.webError ? 1 : 0;
    VantInstallationDebugFlag = switches.debug;
}

- (NSString *)secondScanDriverLocation {
    NSDictionary *packages = VantDictionaryForKey([self loadUserSettingsFile], VantPackagesInfoKey);
    return VantStringForKey(VantDictionaryForKey(packages, VantScanDriver1Key), VantScanDriver1LocationKey);
}

- (BOOL)isManualWanted {
    NSDictionary *settings = [self loadUserSettingsFile];
    if (!vant::areManualsLookedFor(textForKey(settings, VantWithoutConnectionKey)))
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
