#import <AppKit/AppKit.h>

#import "WindowSystem.h"

// What is drawn reaches the screen at the end of the run loop's turn.
void VantDrawWindows(void) {
    for (NSWindow *each in [NSApp windows])
        [each displayIfNeeded];
}

// The application's key window has the keyboard.
void VantRequestKeyboard(NSWindow *window) {
    (void)window;
}
