#import <AppKit/AppKit.h>

#import "Drawing.h"

// Twice: cells lay out controls as they are drawn.
void VantDrawWindows(void) {
    for (NSWindow *each in [NSApp windows]) {
        [each displayIfNeeded];
        [each displayIfNeeded];
        [[each graphicsContext] flushGraphics];
    }
}
