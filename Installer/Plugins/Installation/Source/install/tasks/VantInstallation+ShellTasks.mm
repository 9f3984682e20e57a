#import "install/tasks/VantInstallation+ShellTasks.h"

#import "base/Bridge.h"
#import "base/Retained.h"

#include "install/tasks/Archives.hpp"

#include <cerrno>
#include <sys/wait.h>

/// Waits for the child's exit and leaves it to be collected by its task.
static void waitForExit(pid_t child) {
    siginfo_t ended{};
    while (waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOWAIT) == -1 && errno == EINTR) {
    }
}

@implementation VantInstallation (ShellTasks)

- (void)taskForShellCommand:(NSString *)command {
    const auto task = vant::Retained<NSTask>::assume([[NSTask alloc] init]);
    [task.get() setLaunchPath:@"/bin/sh"];
    NSFileHandle *input = [NSFileHandle fileHandleWithNullDevice];
    [task.get() setStandardInput:input];
    [task.get() setArguments:@[ @"-c", command ]];
    [task.get() launch];
    waitForExit([task.get() processIdentifier]);
    // The run loop may hold on to the task, which must not keep a descriptor meanwhile.
    [input closeFile];
    [self collectTask:task.get()];
}

/// Ends a task whose child has exited. One may be tempted to use `waitUntilExit` on every thread, but it turns the run
/// loop, at least once: on the main thread the next finished download would start its expansion inside this one and be
/// announced before it. Other threads end without turning theirs, and must, or the task is never let go.
- (void)collectTask:(NSTask *)task {
    if ([NSThread isMainThread])
        [task isRunning];
    else
        [task waitUntilExit];
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
