#import "ui/VantComponentTable.h"

/// Shows in the rows how far the installation has got.
@interface VantComponentTable (Installation)
/// Starts to follow the pane's notifications, for good.
- (void)watchInstallation;
@end
