#import "shell/VantInstallation.h"

/// The web flow from download to the first package, and the endings of both flows.
@interface VantInstallation (WebDriver)
/// Starts the download of one component's archive and announces it. Main thread.
- (void)webDriverDownloading:(NSString *)address;
/// Handler of "webDownloadStartNotification".
- (void)ReNotification:(NSNotification *)notification;
/// Handler of "downloadinfoo" and "downloadcompleted".
- (void)receivedownloadNotification:(NSNotification *)notification;
/// Handler of the next-package and completion notifications of both flows; runs on the thread that posts.
- (void)receiveNotification1:(NSNotification *)notification;
/// Merges the media selection into the web list, orders and filters it, and starts its first package. Main thread. The
/// argument is ignored.
- (void)InstallWebComponents:(id)ignored;
/// The last download error code, for the host.
- (int)getErrcodeStr;
@end
