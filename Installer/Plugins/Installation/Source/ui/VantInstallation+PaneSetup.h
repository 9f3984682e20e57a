#import "shell/VantInstallation.h"

/// The last step of creation. Thread: main.
@interface VantInstallation (PaneSetup)
/// Shows the first slide, clears leftovers of an earlier run, reads the selections and starts one view. Always YES.
/// Blocks while the web selection file is missing and while the administrator prompt is up.
- (BOOL)setUpPane;
@end
