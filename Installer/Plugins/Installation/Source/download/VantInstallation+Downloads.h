#import "shell/VantInstallation.h"

/// The pane as the delegate of every download of its run. They all share the pane's one set of download fields, which
/// describes the download started last and counts the bytes of all. Main thread.
@interface VantInstallation (Downloads) <NSURLDownloadDelegate>
@end
