#import <AppKit/AppKit.h>

#import "Drawing.h"

// What is drawn reaches the screen at the end of the run loop's turn.
void VantDrawWindows(void) {
    for (NSWindow *each in [NSApp windows])
        [each displayIfNeeded];
}
