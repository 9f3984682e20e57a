#pragma once
#import <Foundation/Collections.h>

/// Threads, run loops, timers, operations, child processes, notifications.

NS_ASSUME_NONNULL_BEGIN

typedef NSString *NSRunLoopMode;
typedef NSString *NSNotificationName;

PLATFORM_EXPORT NSRunLoopMode const NSDefaultRunLoopMode;
PLATFORM_EXPORT NSRunLoopMode const NSRunLoopCommonModes API_AVAILABLE(macos(10.5));

@interface NSNotification : NSObject <NSCopying>
@property (readonly, copy) NSNotificationName name;
@property (nullable, readonly, retain) id object;
@property (nullable, readonly, copy) NSDictionary *userInfo;
@end

@interface NSNotificationCenter : NSObject
@property (class, readonly, strong) NSNotificationCenter *defaultCenter;
- (void)addObserver:(id)observer
           selector:(SEL)handler
               name:(nullable NSNotificationName)name
             object:(nullable id)object;
- (void)postNotification:(NSNotification *)notification;
- (void)postNotificationName:(NSNotificationName)name object:(nullable id)object;
- (void)postNotificationName:(NSNotificationName)name
                      object:(nullable id)object
                    userInfo:(nullable NSDictionary *)userInfo;
- (void)removeObserver:(id)observer;
- (void)removeObserver:(id)observer name:(nullable NSNotificationName)name object:(nullable id)object;
@end

@interface NSThread : NSObject
@property (class, readonly) BOOL isMainThread API_AVAILABLE(macos(10.5));
@property (class, readonly, strong) NSThread *currentThread;
@property (class, readonly, strong) NSThread *mainThread API_AVAILABLE(macos(10.5));
+ (void)detachNewThreadSelector:(SEL)operation toTarget:(id)target withObject:(nullable id)argument;
+ (void)sleepForTimeInterval:(NSTimeInterval)seconds API_AVAILABLE(macos(10.5));
@end

@interface NSObject (OtherThreads)
- (void)performSelectorOnMainThread:(SEL)operation withObject:(nullable id)argument waitUntilDone:(BOOL)wait;
@end

@class NSTimer;

@interface NSRunLoop : NSObject
@property (class, readonly, strong) NSRunLoop *currentRunLoop;
@property (class, readonly, strong) NSRunLoop *mainRunLoop API_AVAILABLE(macos(10.5));
@property (nullable, readonly, copy) NSRunLoopMode currentMode;
- (void)addTimer:(NSTimer *)timer forMode:(NSRunLoopMode)mode;
@end

@interface NSRunLoop (Turning)
- (BOOL)runMode:(NSRunLoopMode)mode beforeDate:(NSDate *)limit;
@end

@interface NSObject (DelayedPerforming)
- (void)performSelector:(SEL)operation withObject:(nullable id)argument afterDelay:(NSTimeInterval)delay;
- (void)performSelector:(SEL)operation
             withObject:(nullable id)argument
             afterDelay:(NSTimeInterval)delay
                inModes:(NSArray<NSRunLoopMode> *)modes;
+ (void)cancelPreviousPerformRequestsWithTarget:(id)target;
@end

@interface NSTimer : NSObject
+ (NSTimer *)scheduledTimerWithTimeInterval:(NSTimeInterval)seconds
                                     target:(id)target
                                   selector:(SEL)operation
                                   userInfo:(nullable id)userInfo
                                    repeats:(BOOL)repeats;
+ (NSTimer *)timerWithTimeInterval:(NSTimeInterval)seconds
                            target:(id)target
                          selector:(SEL)operation
                          userInfo:(nullable id)userInfo
                           repeats:(BOOL)repeats;
- (void)invalidate;
@property (readonly, getter=isValid) BOOL valid;
@end

API_AVAILABLE(macos(10.5))
@interface NSOperation : NSObject
- (void)start;
@end

API_AVAILABLE(macos(10.5))
@interface NSInvocationOperation : NSOperation
- (nullable instancetype)initWithTarget:(id)target selector:(SEL)operation object:(nullable id)argument;
@end

@interface NSTask : NSObject
- (instancetype)init NS_DESIGNATED_INITIALIZER;
@property (nullable, copy) NSArray<NSString *> *arguments;
@property (nullable, copy) NSDictionary<NSString *, NSString *> *environment;
@property (nullable, retain) id standardInput;
@property (nullable, retain) id standardOutput;
@property (nullable, retain) id standardError;
@property (readonly) int processIdentifier;
@property (readonly, getter=isRunning) BOOL running;
@property (readonly) int terminationStatus;
@end

@interface NSTask (Waiting)
- (void)waitUntilExit;
@end

@interface NSTask (Launching)
@property (nullable, copy) NSString *launchPath API_DEPRECATED("Use executableURL instead", macos(10.0, 27.0));
- (void)launch API_DEPRECATED("Use -launchAndReturnError: instead", macos(10.0, 27.0));
@end

@interface NSProcessInfo : NSObject
@property (class, readonly, strong) NSProcessInfo *processInfo;
@property (readonly, copy) NSDictionary<NSString *, NSString *> *environment;
@property (readonly) int processIdentifier;
@end

NS_ASSUME_NONNULL_END
