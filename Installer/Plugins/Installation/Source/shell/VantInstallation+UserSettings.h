#import "shell/VantInstallation.h"

/// The choices that the host has written down. Thread: main.
@interface VantInstallation (UserSettings)
/// The user settings, read afresh from `mUserOptionsFilePath5` on every call; nil when the file is missing, unreadable
/// or no dictionary.
- (NSMutableDictionary *)loadUserSettingsFile;
/// Sets the web flow, web error and tracing switches. Nil settings leave all of them off.
- (void)applySwitchesOfSettings:(NSDictionary *)settings;
/// Path of the second scan-driver package, nil when the settings name none.
- (NSString *)secondScanDriverLocation;
/// Whether the settings ask for manuals and the media hold one for any of the models.
- (BOOL)isManualWanted;
@end
