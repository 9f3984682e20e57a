#import "shell/VantInstallation.h"

/// The downloads of the web flow, from their start to the expansion of each archive. Thread: main.
@interface VantInstallation (WebDriver)
/// Starts the download of every ticked row's archive, in row order.
- (void)startSelectedDownloads;
/// Starts the download of one component's archive and announces it.
- (void)webDriverDownloading:(NSString *)address;
/// Handler of "webDownloadStartNotification".
- (void)ReNotification:(NSNotification *)notification;
/// Handler of "downloadinfoo" and "downloadcompleted".
- (void)receivedownloadNotification:(NSNotification *)notification;
/// The file that the next "downloadcompleted" expands, nil when none has been created for it.
- (NSString *)pathToExpandNext;
/// The last download error code, for the host.
- (int)getErrcodeStr;
@end
