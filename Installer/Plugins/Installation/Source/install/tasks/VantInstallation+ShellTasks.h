#import "shell/VantInstallation.h"

/// Child processes and archive expansion. Every operation returns when its child has exited; nothing is reported.
/// Thread: any; the main one for downloads, where no run loop turns meanwhile, and an installer thread for profiles.
@interface VantInstallation (ShellTasks)
/// Runs the command through "/bin/sh" with the null device as its input. Raises when the shell cannot be started.
- (void)taskForShellCommand:(NSString *)command;
/// Expands a zip archive into the folder, which need not exist.
- (void)unzip:(NSString *)archivePath ExtractPath:(NSString *)destination;
/// Expands a cpio archive, compressed or not, into the folder, which need not exist.
- (void)ungz:(NSString *)archivePath ExtractPath:(NSString *)destination;
/// Does nothing.
- (void)someTaskHasTerminated:(NSNotification *)notification;
@end
