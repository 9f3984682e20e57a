#import "shell/VantInstallation.h"

/// What the pane reports to the host. Thread: main.
@interface VantInstallation (SelectedSoftware)
/// The kinds of software that both selections name, media first, each once. The list itself, not a copy.
- (NSMutableArray *)fetchSelectedSoftwareList;
@end
