#import "shell/VantInstallation.h"

/// The order that packages are installed in, and what the web list leaves out. Thread: main.
@interface VantInstallation (InstallOrder)
/// Puts records into the required order, in place. The install type is "CD" (ordered by "TYPE") or "SmartUpdate"
/// (ordered by "componentname"); any other leaves the list unchanged. The misspelt label is part of the name.
+ (void)sortMutableListOfComponentsToInstallAsPerRequiredOrder:(NSMutableArray *)components
                                                 foInstallType:(NSString *)installType;
/// Drops web records whose "installerpath" an earlier record has.
- (void)filteroutRedundantComponentsforSmartUpdate;
/// Drops the web records of the two legacy scan packages.
- (void)filteroutScanLegacyComponentsforSmartUpdate;
/// Whether the web list holds an uninstaller package. Adds nothing, despite its name.
- (BOOL)addUninstallerPackageIfNotPresent;
@end
