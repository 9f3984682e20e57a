#import "shell/VantInstallation.h"

/// What a run tells those who show it, beside its notifications.
@interface VantInstallation (RunEvents)
/// The package at the run's position is about to be installed, as the first. Thread: main.
- (void)runWillInstall;
/// The run has stopped for good, before its end. Thread: any.
- (void)runHasStopped;
/// A download has failed; it may be tried again. Thread: main.
- (void)runHasLostDownload:(id)download;
@end
