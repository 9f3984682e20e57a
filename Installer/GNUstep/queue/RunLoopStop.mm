#import <Foundation/Foundation.h>

#include <CoreFoundation/CoreFoundation.h>

// A pass of the loop ends by itself after an input, but one that fires a timer or sends a waiting message first goes on
// to wait for input, with the nearest timer as its limit.

/// A timer that limits the wait: at its first firing it has done so unless the pass was still at its timers, so only
/// the second is certain to be another pass.
@interface VantRunLoopWaker : NSObject {
    int firings_;
}
- (void)fire:(NSTimer *)timer;
@end

@implementation VantRunLoopWaker

- (void)fire:(NSTimer *)timer {
    if (++firings_ == 2)
        [timer invalidate];
}

@end

CFRunLoopRef CFRunLoopGetCurrent(void) {
    return reinterpret_cast<CFRunLoopRef>([NSRunLoop currentRunLoop]);
}

void CFRunLoopStop(CFRunLoopRef loop) {
    auto *const running = reinterpret_cast<NSRunLoop *>(loop);
    NSString *const mode = [running currentMode];
    if (mode == nil)
        return;
    VantRunLoopWaker *const waker = [[[VantRunLoopWaker alloc] init] autorelease];
    NSTimer *const timer = [NSTimer timerWithTimeInterval:0.0
                                                   target:waker
                                                 selector:@selector(fire:)
                                                 userInfo:nil
                                                  repeats:YES];
    [running addTimer:timer forMode:mode];
}
