#import "shell/VantInstallation.h"

/// ICC colour profiles for the scan driver. Failures end in the trace log. Thread: installer.
@interface VantInstallation (ICCProfiles)
/// Copies the media's profiles when a package of this file name calls for them.
- (void)installICCProfilesIfRequired:(NSString *)packageName;
/// Stages the source folder's profiles and archives, expands the last archive, and copies every profile into the user's
/// profile folder without overwriting. The folder is expected to end in "/".
- (void)copyIccProfilesToTmpandInstall:(NSString *)sourceFolder;
@end
