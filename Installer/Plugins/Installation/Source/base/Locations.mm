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

static BOOL isFolder(NSString *path) {
    BOOL folder = NO;
    return [[NSFileManager defaultManager] fileExistsAtPath:path isDirectory:&folder] && folder;
}

static BOOL ensureFolder(NSString *path, NSDictionary *attributes) {
    if (!isFolder(path))
        [[NSFileManager defaultManager] createDirectoryAtPath:path
                                  withIntermediateDirectories:YES
                                                   attributes:attributes
                                                        error:nullptr];
    return isFolder(path);
}

BOOL VantEnsureFolder(NSString *path) {
    return ensureFolder(path, nil);
}

BOOL VantEnsurePrivateFolder(NSString *path) {
    return ensureFolder(
        path,
        @{NSFilePosixPermissions : @0700});
}

BOOL VantFolderHoldsAnything(NSString *path) {
    return path != nil && [[[NSFileManager defaultManager] enumeratorAtPath:path] nextObject] != nil;
}

NSString *VantMediaRoot(void) {
    return [[[NSBundle mainBundle] bundlePath] stringByDeletingLastPathComponent];
}

NSString *VantHostPackagePath(NSString *name) {
    return [[NSBundle mainBundle] pathForResource:name ofType:@"pkg"];
}
