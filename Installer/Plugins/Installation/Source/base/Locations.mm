#import "base/Locations.h"

NSString *const VantUserSettingsFile = @"Vantrel/VantUserSettings.plist";
NSString *const VantWebSelectionFile = @"Vantrel/SelectedInput.plist";
NSString *const VantMediaSelectionFile = @"Vantrel/CD/SelectedInput.plist";
NSString *const VantKeptModelInfoFile = @"Vantrel/keep_ModelInfo.plist";
NSString *const VantWebInstallErrorFile = @"Vantrel/WebInstallError.plist";
NSString *const VantDownloadFolder = @"Vantrel/Download";
NSString *const VantProfilesFolder = @"Vantrel/Profiles";

NSString *VantTemporaryPath(NSString *relativePath) {
    return [NSTemporaryDirectory() stringByAppendingPathComponent:relativePath];
}

NSString *VantMediaRoot(void) {
    return [[[NSBundle mainBundle] bundlePath] stringByDeletingLastPathComponent];
}

NSString *VantHostPackagePath(NSString *name) {
    return [[NSBundle mainBundle] pathForResource:name ofType:@"pkg"];
}
