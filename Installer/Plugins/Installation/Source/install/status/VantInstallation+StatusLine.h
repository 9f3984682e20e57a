#import "shell/VantInstallation.h"

/// What the pane says and shows while a package installs.
@interface VantInstallation (StatusLine)
/// Switches the pane from its waiting look to the installing look, with a sliver of progress. Main thread.
- (void)showInstallingLook;
/// The status text for a component's display name, in the word order of the host's language. Any thread.
- (NSString *)displayInstallingForComponent:(NSString *)componentName;
/// Sets the installation bar. Main thread.
- (void)updateProgressWithDoubleValue:(double)value;
/// Sets the status line. Main thread.
- (void)updateInstallingTextField:(NSString *)text;
@end
