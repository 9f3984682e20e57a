#import "shell/VantInstallation.h"

/// The system's prompt. Thread: main.
@interface VantInstallation (AdministratorRights)
/// Asks the user for administrator rights and answers whether they were granted. Blocks while the system's prompt is
/// up; clicks made meanwhile never reach the pane. A refusal marks the pane invalid, a grant makes it impossible to
/// cancel.
- (BOOL)obtainAdministratorRights;
@end
