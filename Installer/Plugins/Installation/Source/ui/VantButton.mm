#import "ui/VantButton.h"

#include <cmath>

static const NSTrackingAreaOptions trackingOptions =
    NSTrackingMouseEnteredAndExited | NSTrackingCursorUpdate | NSTrackingActiveInKeyWindow;

@implementation VantButton

- (void)trackRect:(NSRect)rect {
    _trackingArea = [[NSTrackingArea alloc] initWithRect:rect options:trackingOptions owner:self userInfo:nil];
    [self addTrackingArea:_trackingArea];
}

- (id)initWithFrame:(NSRect)frame {
    self = [super initWithFrame:frame];
    // The frame as given, though tracking areas lie in the button's own coordinates: until its first update, a button
    // away from its superview's origin is tracked by as much off its place. Callers know it so; the update mends it.
    if (self != nil)
        [self trackRect:frame];
    return self;
}

- (void)setWords:(NSString *)words {
    NSDictionary *attributes = @{
        NSFontAttributeName : [self font],
        NSForegroundColorAttributeName : [NSColor blueColor],
        NSUnderlineStyleAttributeName : @(NSUnderlineStyleSingle)
    };
    NSAttributedString *title = [[NSAttributedString alloc] initWithString:words attributes:attributes];
    [self setAttributedTitle:title];
    [title release];
    [self setFrameSize:NSMakeSize(std::ceil([[self cell] cellSize].width), NSHeight([self frame]))];
}

- (void)mouseEntered:(NSEvent *)event {
    (void)event;
    [self setTextColor:[NSColor redColor]];
}

- (void)mouseExited:(NSEvent *)event {
    (void)event;
    [self setTextColor:[NSColor blueColor]];
}

- (void)mouseDown:(NSEvent *)event {
    [self setTextColor:[NSColor blueColor]];
    [super mouseDown:event];
}

- (void)setTextColor:(NSColor *)color {
    NSMutableAttributedString *title = [[self attributedTitle] mutableCopy];
    [title addAttribute:NSForegroundColorAttributeName value:color range:NSMakeRange(0, [title length])];
    [self setAttributedTitle:title];
    [title release];
}

- (void)cursorUpdate:(NSEvent *)event {
    (void)event;
    [[NSCursor pointingHandCursor] set];
}

- (void)updateTrackingAreas {
    [self removeTrackingArea:_trackingArea];
    [_trackingArea release];
    [self trackRect:[self bounds]];
}

@end
