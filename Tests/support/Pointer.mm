#import "Pointer.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#import <GNUstepGUI/GSDisplayServer.h>
#include <thread>

namespace vant::test {

using namespace std::chrono_literals;

bool becomeApplication() {
    if (std::getenv("DISPLAY") == nullptr)
        return false;
    if (NSApp == nil) {
        [NSApplication sharedApplication];
        [NSApp finishLaunching];
    }
    return true;
}

/// What a shell command writes to its standard output.
static std::string outputOf(const std::string &command) {
    FILE *pipe = popen((command + " 2>/dev/null").c_str(), "r"); // NOLINT(cert-env33-c)
    if (pipe == nullptr)
        return {};
    std::string output;
    std::array<char, 256> bytes{};
    while (const std::size_t count = std::fread(bytes.data(), 1, bytes.size(), pipe))
        output.append(bytes.data(), count);
    pclose(pipe);
    return output;
}

// It says itself that it succeeded: the platform collects whatever child has ended, its status included.
bool xdotool(const std::string &arguments) {
    return outputOf("timeout 15 xdotool " + arguments + " && echo done").ends_with("done\n");
}

/// Presses of the left button that the application has begun to handle.
static std::atomic<int> pressesHandled;

static bool handleEvent(NSDate *limit) {
    @autoreleasepool {
        NSEvent *event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                            untilDate:limit
                                               inMode:NSDefaultRunLoopMode
                                              dequeue:YES];
        if (event == nil)
            return false;
        pressesHandled += [event type] == NSLeftMouseDown ? 1 : 0;
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

static std::string handleOf(NSWindow *window) {
    return std::to_string((unsigned long)[GSServerForWindow(window) windowDevice:(int)[window windowNumber]]);
}

/// The window that the keys go to, and the one that the window manager has made the active one.
static std::string windowsInFront() {
    return outputOf("xdotool getwindowfocus -f; xdotool getactivewindow");
}

bool takesKeys(NSWindow *window) {
    const std::string handle = handleOf(window);
    return handleEventsUntil([&] {
        if (windowsInFront() != handle + "\n" + handle + "\n")
            return false;
        while (handleEvent([NSDate distantPast])) {
        }
        return [window isKeyWindow] != NO;
    });
}

bool settlesDown(NSWindow *window) {
    return takesKeys(window) && handMakes("windowmove --sync " + handleOf(window) + " 150 150") && takesKeys(window);
}

bool isGivenKeys(const std::string &title) {
    const auto end = std::chrono::steady_clock::now() + 15s;
    while (std::chrono::steady_clock::now() < end) {
        const std::string inFront = windowsInFront();
        const auto half = inFront.size() / 2;
        if (!inFront.empty() && inFront.substr(0, half) == inFront.substr(half) &&
            outputOf("xdotool getactivewindow getwindowname") == title + "\n")
            return true;
        std::this_thread::sleep_for(20ms);
    }
    return false;
}

/// Acts on a thread beside the main one, which handles the events meanwhile.
static bool actsWhileEventsAreHandled(const std::function<bool()> &act) {
    std::atomic<bool> ended = false;
    bool succeeded = false;
    std::thread hand([&] {
        succeeded = act();
        ended = true;
    });
    const bool inTime = handleEventsUntil([&] { return ended.load(); }, 30);
    hand.join();
    return inTime && succeeded;
}

bool handMakes(const std::string &arguments) {
    return actsWhileEventsAreHandled([&] { return xdotool(arguments); });
}

static bool isHandledSince(int presses) {
    const auto end = std::chrono::steady_clock::now() + 10s;
    while (pressesHandled == presses && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(5ms);
    return pressesHandled != presses;
}

bool handClicks(NSWindow *window, NSPoint point) {
    const std::string place = moveTo(window, point);
    return actsWhileEventsAreHandled([&] {
        const int before = pressesHandled;
        const bool isSeen = xdotool(place + pressOfButton) && isHandledSince(before);
        return xdotool(releaseOfButton) && isSeen;
    });
}

// The display counts from the upper left.
std::string moveTo(NSWindow *window, NSPoint point) {
    const CGFloat height = [[window contentView] bounds].size.height;
    return "mousemove --window " + handleOf(window) + " " + std::to_string(std::lround(point.x)) + " " +
           std::to_string(std::lround(height - point.y));
}

} // namespace vant::test
