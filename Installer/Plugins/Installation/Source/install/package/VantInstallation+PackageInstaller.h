#import "shell/VantInstallation.h"

/// Installs one package with administrator rights and starts what follows it. Each runs on a detached thread of its
/// own.
@interface VantInstallation (PackageInstaller)
/// Installs the package of a web record. The misspelling is the name that the selector is registered under.
- (void)installCompoentAtPath:(NSDictionary *)webRecord;
/// Installs the package of a media record.
- (void)installCDComponentAtPath:(NSDictionary *)mediaRecord;
@end
