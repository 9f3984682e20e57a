#import "shell/VantInstallation.h"

/// What the web list holds beside the downloaded packages, and its order. Thread: main.
@interface VantInstallation (WebList)
/// Appends the manual, when one applies, and the uninstaller of the host.
- (void)completeWebList;
/// Appends what the media selection has and the list has not; the web version of a package wins.
- (void)mergeMediaSelection;
/// Orders the list, drops what must not be installed, and sees to the uninstaller.
- (void)arrangeWebList;
@end
