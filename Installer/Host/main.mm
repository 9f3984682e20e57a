#import "HostController.h"

#include <cstdlib>

/// This host has one window and no menu: nothing else is to be put on the screen.
static void registerDefaults(void) {
    [[NSUserDefaults standardUserDefaults]
        registerDefaults:@{@"GSSuppressAppIcon" : @"YES", @"GSAppOwnsMiniwindow" : @"NO"}];
}

int main(void) {
    @autoreleasepool {
        registerDefaults();
        const HostSettings settings = VantHostSettings();
        NSApplication *application = [NSApplication sharedApplication];
        HostController *controller = [[HostController alloc] initWithSettings:settings];
        [application setDelegate:(id)controller];
        [application run];
        [controller release];
    }
    return EXIT_FAILURE;
}
