#import <AppKit/AppKit.h>

#include "GNUstep/Hook.hpp"

// GNUstep gives every turning indicator a timer of its own, in the default mode and in that of modal panels. A mode
// lets go of a timer that has ended only as it is run, so where no panel is shown each start leaves one behind, which
// every further start looks at. Here all indicators share one timer, which rests while none of them turns.

namespace {

using Message = void (*)(NSProgressIndicator *, SEL, id);

constexpr NSTimeInterval usualDelay = 5.0 / 60;

Message originalStart;
Message originalStop;
ptrdiff_t runningField;

BOOL &isRunning(NSProgressIndicator *indicator) {
    return *reinterpret_cast<BOOL *>(reinterpret_cast<char *>(indicator) + runningField);
}

bool isStillBar(NSProgressIndicator *indicator) {
    return ![indicator isIndeterminate] && [indicator style] == NSProgressIndicatorBarStyle;
}

/// Whether the shared timer serves it: the others keep to threads, run loops and paces of their own.
bool isUsual(NSProgressIndicator *indicator) {
    return [NSThread isMainThread] && ![indicator usesThreadedAnimation] && [indicator animationDelay] == usualDelay;
}

} // namespace

/// The indicators that turn, held as long as they do, and their timer.
@interface VantAnimationTimer : NSObject {
    NSMutableSet *turning;
    NSTimer *timer;
}
@end

@implementation VantAnimationTimer

+ (VantAnimationTimer *)shared {
    static VantAnimationTimer *const shared = [[VantAnimationTimer alloc] init];
    return shared;
}

- (id)init {
    self = [super init];
    if (self == nil)
        return nil;
    turning = [[NSMutableSet alloc] init];
    timer = [[NSTimer timerWithTimeInterval:usualDelay
                                     target:self
                                   selector:@selector(animate:)
                                   userInfo:nil
                                    repeats:YES] retain];
    for (NSString *mode in [NSArray arrayWithObjects:NSDefaultRunLoopMode, NSModalPanelRunLoopMode, nil])
        [[NSRunLoop currentRunLoop] addTimer:timer forMode:mode];
    return self;
}

/// Thread: main.
- (void)add:(NSProgressIndicator *)indicator {
    @synchronized(self) {
        if ([turning count] == 0)
            [timer setFireDate:[NSDate dateWithTimeIntervalSinceNow:usualDelay]];
        [turning addObject:indicator];
    }
}

/// Thread: any.
- (void)remove:(NSProgressIndicator *)indicator {
    @synchronized(self) {
        [turning removeObject:indicator];
    }
}

- (NSArray *)indicators {
    @synchronized(self) {
        return [turning allObjects];
    }
}

// A stop followed by a start, as when one row ends and the next begins, leaves the timer as it is.
- (void)animate:(NSTimer *)fired {
    NSArray *indicators = [self indicators];
    if ([indicators count] == 0)
        [fired setFireDate:[NSDate distantFuture]];
    for (NSProgressIndicator *indicator in indicators)
        [indicator animate:indicator];
}

@end

namespace {

void startAnimation(NSProgressIndicator *indicator, SEL command, id sender) {
    if (isRunning(indicator) || isStillBar(indicator) || !isUsual(indicator))
        return originalStart(indicator, command, sender);
    isRunning(indicator) = YES;
    [[VantAnimationTimer shared] add:indicator];
}

void stopAnimation(NSProgressIndicator *indicator, SEL command, id sender) {
    const bool turned = isRunning(indicator);
    originalStop(indicator, command, sender);
    if (turned && !isRunning(indicator))
        [[VantAnimationTimer shared] remove:indicator];
}

} // namespace

/// Sets the hooks.
@interface VantAnimationHooks : NSObject
@end

@implementation VantAnimationHooks

+ (void)load {
    @autoreleasepool {
        Ivar running = class_getInstanceVariable([NSProgressIndicator class], "_isRunning");
        if (running == nullptr)
            return; // another GNUstep, left as it is
        runningField = ivar_getOffset(running);
        originalStart = vant::hook([NSProgressIndicator class], @selector(startAnimation:), &startAnimation);
        originalStop = vant::hook([NSProgressIndicator class], @selector(stopAnimation:), &stopAnimation);
    }
}

@end
