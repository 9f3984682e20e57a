#import "VantInstallation+ShellTasks.h"

#import "Bridge.h"
#import "Retained.h"

#include "DittoCommand.hpp"

#include <cerrno>
#include <sys/wait.h>

/// Waits for the child's exit and leaves it to be collected. The task's own wait runs the thread's run loop meanwhile,
/// and on the main thread that would let the next finished download start its expansion inside this one.
static void waitForExit(pid_t child) {
    siginfo_t ended{};
    while (waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOWAIT) == -1 && errno == EINTR) {
    }
}

@implementation VantInstallation (ShellTasks)

- (void)taskForShellCommand:(NSString *)command {
    const auto task = vant::Retained<NSTask>::assume([[NSTask alloc] init]);
    [task.get() setLaunchPath:@"/bin/sh"];
    [task.get() setStandardInput:[NSFileHandle fileHandleWithNullDevice]];
    [task.get() setArguments:@[ @"-c", command ]];
    [task.get() launch];
    waitForExit([task.get() processIdentifier]);
    [task.get() waitUntilExit];
}

- (void)unzip:(NSString *)archivePath ExtractPath:(NSString *)destination {
    [self expand:archivePath to:destination ofKind:vant::ArchiveKind::Zip];
}

- (void)ungz:(NSString *)archivePath ExtractPath:(NSString *)destination {
    [self expand:archivePath to:destination ofKind:vant::ArchiveKind::Cpio];
}

- (void)expand:(NSString *)archivePath to:(NSString *)destination ofKind:(vant::ArchiveKind)kind {
    const std::string command = vant::dittoCommand(kind, vant::utf8(archivePath), vant::utf8(destination));
    [self taskForShellCommand:vant::nsString(command)];
}

- (void)someTaskHasTerminated:(NSNotification *)notification {
    (void)notification;
}

@end
