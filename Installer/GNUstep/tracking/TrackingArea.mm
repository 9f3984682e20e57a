#import "GNUstep/tracking/Tracking.h"

#include "GNUstep/Hook.hpp"

namespace {

using AreaInitialiser = id (*)(id, SEL, NSRect, NSTrackingAreaOptions, id, NSDictionary *);

AreaInitialiser originalInitialiser;

// GNUstep's initialiser drops the user information.
id initialiseArea(id area, SEL command, NSRect rect, NSTrackingAreaOptions options, id owner, NSDictionary *userInfo) {
    id made = originalInitialiser(area, command, rect, options, owner, userInfo);
    object_setInstanceVariable(made, "_userInfo", [userInfo retain]);
    return made;
}

} // namespace

/// Mends the class at load.
@interface VantTrackingAreaFix : NSObject
@end

@implementation VantTrackingAreaFix

+ (void)load {
    @autoreleasepool {
        SEL name = @selector(initWithRect:options:owner:userInfo:);
        originalInitialiser = vant::hook([NSTrackingArea class], name, &initialiseArea);
    }
}

@end

@implementation NSView (VantTrackingAreas)

- (void)addTrackingArea:(NSTrackingArea *)area {
    if (area == nil)
        return;
    vant::TrackedArea tracked{.view = self, .area = area, .inside = true};
    if (([area options] & NSTrackingAssumeInside) == 0)
        tracked.inside = _window != nil && vant::isInside(tracked, [_window mouseLocationOutsideOfEventStream]);
    vant::addTrackedArea(tracked);
}

- (void)removeTrackingArea:(NSTrackingArea *)area {
    vant::removeTrackedArea(self, area);
}

- (NSArray *)trackingAreas {
    NSMutableArray *areas = [NSMutableArray array];
    for (const vant::TrackedArea &each : vant::trackedAreas(self))
        [areas addObject:each.area];
    return areas;
}

- (void)updateTrackingAreas {
}

@end

@implementation NSEvent (VantTrackingAreas)

- (NSTrackingArea *)trackingArea {
    return vant::areaAt([self trackingNumber]);
}

@end
