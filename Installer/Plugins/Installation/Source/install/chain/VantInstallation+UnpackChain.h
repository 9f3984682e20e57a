#import "shell/VantInstallation.h"

/// What becomes of an expanded archive. Thread: main, as the downloads.
@interface VantInstallation (UnpackChain)
/// Handler of "unzipcompleted": turns the expanded folder's packages into web records, sets aside what cannot be
/// installed unattended, and ends the downloads when the last archive has been expanded.
- (void)receiveunzipNotification:(NSNotification *)notification;
@end
