#import "shell/VantInstallation.h"

#include "selection/Flow.hpp"

#include <string>

/// What the pane shows of its work: the three bars and the status line, which nothing else touches.
@interface VantInstallation (StatusLine)
/// The look at creation: a placeholder where the bars will be. Thread: main.
- (void)showWaitingLook;
/// While the host still writes the web selection. Thread: main.
- (void)showConnectingLook;
/// From the first downloaded file on. Thread: main.
- (void)showDownloadingLook;
/// Moves the download bar to the value, never backwards. Thread: main.
- (void)showDownloadedShare:(double)share;
/// When the network has been given up. Thread: main.
- (void)showOfflineLook;
/// When the downloads ended with something that the user has to install. Thread: main.
- (void)showSetAsideLook;
/// While packages are installed; starts with a sliver of progress. Thread: main.
- (void)showInstallingLook;
/// After the last package: the host's "FINISH.TITLE". Shown when it returns, unless the main thread is held for two
/// seconds. Thread: any.
- (void)showFinishedLook;

/// The status text for a component's display name, in the word order of the host's language. Thread: any.
- (NSString *)displayInstallingForComponent:(NSString *)componentName;
/// What a component of this name is called in the status text. Thread: any.
- (NSString *)displayNameComponent:(const std::string &)component inFlow:(vant::Flow)flow;
/// Sets the installation bar. Thread: main.
- (void)updateProgressWithDoubleValue:(double)value;
/// Sets the status line. Thread: main.
- (void)updateInstallingTextField:(NSString *)text;
@end
