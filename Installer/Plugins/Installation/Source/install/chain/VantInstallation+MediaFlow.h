#import "shell/VantInstallation.h"

@interface VantInstallation (MediaFlow)
/// Starts the installation of the media list; does nothing when the list is empty. Main thread. The argument is
/// ignored.
- (void)InstallCDComponents:(id)ignored;
@end
