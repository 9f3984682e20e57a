#import <Cocoa/Cocoa.h>

/// A button that behaves like a link: blue, red while the mouse is over it, with a pointing hand for a cursor. Main
/// thread.
@interface VantButton : NSButton {
    NSTrackingArea *_trackingArea;
}
/// Colours the whole title; fonts and other attributes are kept.
- (void)setTextColor:(NSColor *)color;
/// Shows the pointing hand.
- (void)cursorUpdate:(NSEvent *)event;
@end
