#import "download/VantDownload.h"
#import "shell/VantInstallation.h"

/// The pane as the delegate of every download of its run. They all share the pane's one set of download fields, which
/// describes the download started last and counts the bytes of all. Thread: main.
@interface VantInstallation (Downloads) <VantDownloadDelegate>
/// Takes note of the download that was started last and of the file that it will write.
- (void)noteStartedDownload;
@end
