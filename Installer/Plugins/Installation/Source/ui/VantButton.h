#import <Cocoa/Cocoa.h>

/// A button that behaves like a link: blue, red while the mouse is over it, with a pointing hand for a cursor. Main
/// thread.
@interface VantButton : NSButton {
    NSTrackingArea *_trackingArea;
}
/// Shows the words blue and underlined, in the button's font, and makes the button as wide as they are, so that it
/// reacts where its words are and nowhere beside them.
- (void)setWords:(NSString *)words;
/// Colours the whole title; fonts and other attributes are kept.
- (void)setTextColor:(NSColor *)color;
/// Shows the pointing hand.
- (void)cursorUpdate:(NSEvent *)event;
@end
