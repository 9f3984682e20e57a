#import "shell/VantInstallation.h"

#include "selection/Flow.hpp"

/// The chain of packages of both flows: its start, each next package, and its end.
@interface VantInstallation (InstallChain)
/// Starts the installation of the media list; does nothing when the list is empty. The argument is ignored.
/// Thread: main.
- (void)InstallCDComponents:(id)ignored;
/// Merges the media selection into the web list, orders and filters it, and starts its first package; does nothing when
/// the list stays empty. The argument is ignored. Thread: main.
- (void)InstallWebComponents:(id)ignored;
/// Runs `InstallWebComponents:` 3.0 seconds from now. Thread: main.
- (void)scheduleWebInstallation;
/// Announces the package that follows the one that has just ended, or that the list is done. Raises when the list has
/// no further package to announce. Thread: installer.
- (void)announceWhatFollowsInFlow:(vant::Flow)flow;
/// Handler of the next-package and completion notifications of both flows: each package gets a thread of its own, and
/// the last one tells the host to go on. Thread: installer.
- (void)receiveNotification1:(NSNotification *)notification;
@end
