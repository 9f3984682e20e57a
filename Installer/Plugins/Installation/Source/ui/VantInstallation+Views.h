#import "shell/VantInstallation.h"

/// The two ways of working, and their rows. Thread: main.
@interface VantInstallation (Views)
/// Starts the web view: rows, administrator rights, one download per ticked row.
- (void)showNormalView;
/// Starts the media view: rows, administrator rights, the list of packages to install.
- (void)showNormalViewforCDInstallation;
/// Marks the pane invalid for the host.
- (void)showBackPaneView;
/// Disables the host's button 2.
- (void)showAbnormalView;
/// Appends a row to `objects`; no table is refreshed.
- (void)addRow:(id)sender;
/// Does nothing.
- (void)removeRow:(id)sender;
/// Appends a row to `objects1` and reloads `list1`.
- (void)addRow1:(id)sender;
/// Removes the row selected in `list1` from `objects1` and reloads `list1`; raises when none is selected.
- (void)removeRow1:(id)sender;
/// Registered for "FindInstallFile", which nobody posts. Does nothing.
- (void)receiveNotification:(NSNotification *)notification;
@end
