#import "VantTheme.h"

#import "ThemeColours.h"

#include <algorithm>
#include <cmath>

using namespace vant::host;

static const CGFloat buttonRadius = 6;
static const CGFloat barHeight = 8;
static const CGFloat turnOfStep = 30;

static NSColor *paint(Colour value, CGFloat alpha = 1.0) {
    return [NSColor colorWithCalibratedRed:value.red green:value.green blue:value.blue alpha:alpha];
}

static NSBezierPath *rounded(NSRect rect, CGFloat radius) {
    const CGFloat fitting = std::min(radius, std::min(rect.size.width, rect.size.height) / 2);
    return [NSBezierPath bezierPathWithRoundedRect:rect xRadius:fitting yRadius:fitting];
}

static void fillRounded(NSRect rect, CGFloat radius, NSColor *colour) {
    [colour set];
    [rounded(rect, radius) fill];
}

/// A hairline lies in the middle of its pixels.
static void strokeRounded(NSRect rect, CGFloat radius, NSColor *colour, CGFloat width = 1) {
    NSBezierPath *path = rounded(NSInsetRect(rect, width / 2, width / 2), radius);
    [path setLineWidth:width];
    [colour set];
    [path stroke];
}

static bool isPressed(GSThemeControlState state) {
    return state != GSThemeNormalState && state != GSThemeFirstResponderState && state != GSThemeDisabledState;
}

/// Where the groove of a bar lies. A small bar hugs the top of its frame, as the platform's own does: what lays it out
/// counts on a standard height that this platform does not set.
static NSRect grooveOf(NSProgressIndicator *bar, NSRect bounds) {
    const CGFloat height = std::min(barHeight, bounds.size.height);
    const CGFloat offset =
        [bar controlSize] == NSRegularControlSize ? std::floor((bounds.size.height - height) / 2) : 0;
    return NSMakeRect(bounds.origin.x, bounds.origin.y + offset, bounds.size.width, height);
}

static void drawBar(NSProgressIndicator *bar, NSRect bounds, int count, double fraction) {
    const NSRect track = grooveOf(bar, bounds);
    fillRounded(track, barHeight / 2, paint(vant::host::groove));
    // The groove alone is too pale to show how long an empty bar is.
    strokeRounded(track, barHeight / 2, paint(line));
    NSRect filled = track;
    if ([bar isIndeterminate]) {
        filled.size.width = track.size.width / 4;
        filled.origin.x += (track.size.width - filled.size.width) * (1 - std::cos(count * 0.15)) / 2;
    } else {
        if (fraction <= 0)
            return;
        // Never narrower than its own rounding.
        filled.size.width = std::max(track.size.height, std::round(track.size.width * fraction));
    }
    fillRounded(filled, barHeight / 2, paint(accent));
}

static void strokeArc(NSPoint middle, CGFloat radius, CGFloat start, CGFloat end, NSColor *colour) {
    NSBezierPath *arc = [NSBezierPath bezierPath];
    [arc appendBezierPathWithArcWithCenter:middle radius:radius startAngle:start endAngle:end];
    [arc setLineWidth:2];
    [arc setLineCapStyle:NSRoundLineCapStyle];
    [colour set];
    [arc stroke];
}

/// A ring of which a part is lit, and goes round.
static void drawSpinner(NSRect bounds, int count) {
    const CGFloat radius = std::min<CGFloat>(16, std::min(bounds.size.width, bounds.size.height)) / 2 - 1;
    const NSPoint middle = NSMakePoint(NSMidX(bounds), NSMidY(bounds));
    const CGFloat start = count * turnOfStep;
    strokeArc(middle, radius, 0, 360, paint(vant::host::groove));
    strokeArc(middle, radius, start, start + 100, paint(accent));
}

@implementation VantTheme (Drawing)

// The blue outline marks the default button; the arrow of old, put into its title, does not.
- (void)setKeyEquivalent:(NSString *)key forButtonCell:(NSButtonCell *)cell {
    (void)key;
    (void)cell;
}

- (void)drawButton:(NSRect)frame
                in:(NSCell *)cell
              view:(NSView *)view
             style:(int)style
             state:(GSThemeControlState)state {
    (void)view;
    (void)style;
    const bool enabled = [cell isEnabled];
    const bool standard = [cell respondsToSelector:@selector(keyEquivalent)] &&
                          [[(NSButtonCell *)cell keyEquivalent] isEqualToString:@"\r"];
    fillRounded(frame, buttonRadius, paint(isPressed(state) ? pressedKey : key));
    if (enabled && standard)
        strokeRounded(frame, buttonRadius, paint(accent), 1.5);
    else
        strokeRounded(frame, buttonRadius, paint(enabled ? line : faintLine));
}

- (GSThemeMargins)buttonMarginsForCell:(NSCell *)cell style:(int)style state:(GSThemeControlState)state {
    (void)cell;
    (void)style;
    (void)state;
    const GSThemeMargins margins = {.left = 8, .right = 8, .top = 4, .bottom = 4};
    return margins;
}

- (void)drawFocusFrame:(NSRect)frame view:(NSView *)view {
    (void)view;
    strokeRounded(frame, buttonRadius, paint(accent, 0.8), 2);
}

- (void)drawBorderType:(NSBorderType)type frame:(NSRect)frame view:(NSView *)view {
    (void)view;
    if (type == NSNoBorder)
        return;
    [paint(line) set];
    NSFrameRect(frame);
}

- (void)drawProgressIndicator:(NSProgressIndicator *)progress
                   withBounds:(NSRect)bounds
                     withClip:(NSRect)clip
                      atCount:(int)count
                     forValue:(double)value {
    (void)clip;
    if ([progress style] == NSProgressIndicatorSpinningStyle)
        drawSpinner(bounds, count);
    else
        drawBar(progress, bounds, count, value);
}

- (void)drawBoxInClipRect:(NSRect)clip
                  boxType:(NSBoxType)boxType
               borderType:(NSBorderType)borderType
                   inView:(NSBox *)box {
    if (boxType == NSBoxSeparator) {
        [paint(faintLine) set];
        NSRectFill([box bounds]);
        return;
    }
    [super drawBoxInClipRect:clip boxType:boxType borderType:borderType inView:box];
}

@end
