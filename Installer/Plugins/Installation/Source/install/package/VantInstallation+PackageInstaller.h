#import "shell/VantInstallation.h"

#include "install/package/PackageRun.hpp"

/// The word that is kept of an outcome, under the package's file name.
NSString *VantOutcomeWord(vant::InstallOutcome outcome);

/// Installs one package with administrator rights. Thread: installer, one thread a package; nothing is returned, and
/// the chain goes on by notifications.
@interface VantInstallation (PackageInstaller)
/// Installs the package of a web record ("installerpath", "componentname"). The misspelt name is the operation's name.
- (void)installCompoentAtPath:(NSDictionary *)webRecord;
/// Installs the package of a media record ("LOCATION", "TYPE").
- (void)installCDComponentAtPath:(NSDictionary *)mediaRecord;
@end
