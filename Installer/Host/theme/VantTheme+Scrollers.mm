#import "VantTheme.h"

#import "ThemeColours.h"

#include <algorithm>
#include <cmath>
#include <objc/runtime.h>

static const CGFloat shortestKnob = 24; // of which 20 are painted
static const CGFloat sideGap = 3;
static const CGFloat endGap = 2;

/// A stretch of a scroller, from its upper or left end.
struct Stretch {
    CGFloat start;
    CGFloat length;
};

static NSColor *paint(vant::host::Colour value) {
    return [NSColor colorWithCalibratedRed:value.red green:value.green blue:value.blue alpha:1];
}

static bool isUpright(NSRect bounds) {
    return bounds.size.height >= bounds.size.width;
}

static Stretch knobOf(NSScroller *scroller, CGFloat room) {
    const CGFloat length = std::min(room, std::max(shortestKnob, std::floor([scroller knobProportion] * room)));
    return {.start = std::floor([scroller doubleValue] * (room - length)), .length = length};
}

static Stretch stretchOf(NSScrollerPart part, Stretch knob, CGFloat room) {
    switch (part) {
    case NSScrollerKnob:
        return knob;
    case NSScrollerKnobSlot:
        return {.start = 0, .length = room};
    default: // arrows, which are left out; and pages, for which the platform has the slot
        return {.start = 0, .length = 0};
    }
}

/// In the place of the scroller's own geometry, by which it draws and follows the pointer: that keeps room for arrows,
/// and knows knobs as short as the scroller is wide.
static NSRect rectForPart(NSScroller *scroller, SEL selector, NSScrollerPart part) {
    (void)selector;
    const NSRect bounds = [scroller bounds];
    const bool upright = isUpright(bounds);
    const CGFloat room = upright ? bounds.size.height : bounds.size.width;
    if (part == NSScrollerKnob && ![scroller isEnabled])
        return NSZeroRect;
    const Stretch stretch = stretchOf(part, knobOf(scroller, room), room);
    return upright ? NSMakeRect(0, stretch.start, bounds.size.width, stretch.length)
                   : NSMakeRect(stretch.start, 0, stretch.length, bounds.size.height);
}

@implementation VantTheme (Scrollers)

- (float)defaultScrollerWidth {
    return 12;
}

// A knob on a clear ground, without arrows.
- (void)drawScrollerRect:(NSRect)rect
                  inView:(NSView *)view
                 hitPart:(NSScrollerPart)hitPart
            isHorizontal:(BOOL)isHorizontal {
    (void)rect;
    (void)hitPart;
    [paint(vant::host::paper) set];
    NSRectFill([view bounds]);
    const NSRect knob = NSInsetRect([(NSScroller *)view rectForPart:NSScrollerKnob], isHorizontal ? endGap : sideGap,
                                    isHorizontal ? sideGap : endGap);
    if (NSIsEmptyRect(knob))
        return;
    [paint(vant::host::line) set];
    [[NSBezierPath bezierPathWithRoundedRect:knob xRadius:sideGap yRadius:sideGap] fill];
}

- (BOOL)scrollViewUseBottomCorner {
    return NO;
}

// The platform's own way for a theme to take over another class's method cuts the class's name wrongly and finds none.
+ (void)shapeScrollers {
    Method method = class_getInstanceMethod([NSScroller class], @selector(rectForPart:));
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast)
    method_setImplementation(method, reinterpret_cast<IMP>(rectForPart));
}

@end
