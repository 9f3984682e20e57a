#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSDisplayServer.h>

#import "WindowSystem.h"

// Twice: cells lay out controls as they are drawn.
void VantDrawWindows(void) {
    for (NSWindow *each in [NSApp windows]) {
        [each displayIfNeeded];
        [each displayIfNeeded];
        [[each graphicsContext] flushGraphics];
    }
}

void VantRequestKeyboard(NSWindow *window) {
    if ([window isKeyWindow])
        [GSServerForWindow(window) setinputfocus:static_cast<int>([window windowNumber])];
}
