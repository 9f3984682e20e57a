#pragma once
#import <Foundation/Foundation.h>

/// How the tools that AuthorizationExecuteWithPrivileges has run came to their end, which the platform's own call does
/// not tell. Names only: a host links nothing, because the layer travels inside the bundle. On macOS nothing posts it.

/// Posted on the default centre, on the main thread, once the tool's process has ended and is reaped. The main thread's
/// run loop must run. Its object is nil; its user information has the keys below. It may come before or after the end
/// of the tool's output, which a daemon that the tool has left behind can hold open.
static NSString *const VantPrivilegedToolDidExitNotification = @"VantPrivilegedToolDidExitNotification";

/// The path that the caller gave (NSString).
static NSString *const VantPrivilegedToolPathKey = @"VantPrivilegedToolPath";
/// The arguments that the caller gave, without the path (NSArray of NSString).
static NSString *const VantPrivilegedToolArgumentsKey = @"VantPrivilegedToolArguments";
/// The process id that the tool had (NSNumber).
static NSString *const VantPrivilegedToolProcessIdentifierKey = @"VantPrivilegedToolProcessIdentifier";
/// The exit status, 0 to 255 (NSNumber); absent when a signal has ended the tool, or when the host reaped it itself.
static NSString *const VantPrivilegedToolExitStatusKey = @"VantPrivilegedToolExitStatus";
/// The number of the signal that has ended the tool (NSNumber); absent when it exited.
static NSString *const VantPrivilegedToolSignalKey = @"VantPrivilegedToolSignal";
