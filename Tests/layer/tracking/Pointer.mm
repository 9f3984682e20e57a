#import <AppKit/AppKit.h>

#include "tracking/Pointer.hpp"

#include <cstdlib>

namespace vant::test {

bool becomeApplication() {
    if (std::getenv("DISPLAY") == nullptr)
        return false;
    if (NSApp == nil) {
        [NSApplication sharedApplication];
        [NSApp finishLaunching];
    }
    return true;
}

bool xdotool(const std::string &arguments) {
    return std::system(("timeout 15 xdotool " + arguments + " >/dev/null 2>&1").c_str()) == 0; // NOLINT(cert-env33-c)
}

static bool handleEvent(NSDate *limit) {
    @autoreleasepool {
        NSEvent *event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                            untilDate:limit
                                               inMode:NSDefaultRunLoopMode
                                              dequeue:YES];
        if (event == nil)
            return false;
        [NSApp sendEvent:event];
        [NSApp updateWindows];
        return true;
    }
}

bool handleEventsUntil(const std::function<bool()> &condition, double seconds) {
    NSDate *end = [NSDate dateWithTimeIntervalSinceNow:seconds];
    while (!condition() && [end timeIntervalSinceNow] > 0)
        (void)handleEvent([NSDate dateWithTimeIntervalSinceNow:0.02]);
    return condition();
}

void settle() {
    while (handleEvent([NSDate dateWithTimeIntervalSinceNow:0.3])) {
    }
}

} // namespace vant::test
