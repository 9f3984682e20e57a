#pragma once
#import "shell/VantInstallation.h"
#include <atomic>
#include <chrono>
#include <functional>
#include <string>

namespace vant::bench {

using Clock = std::chrono::steady_clock;

} // namespace vant::bench

/// The host of a measured pane: says nothing, and notes when the pane tells it to go on.
@interface BenchObserver : NSObject {
@public
    vant::bench::Clock::time_point finishedAt;
    std::atomic<bool> finished;
}
@end

namespace vant::bench {

/// A variable of the environment, empty when it is not set.
[[nodiscard]] std::string setting(const char *name);
[[nodiscard]] double secondsSince(Clock::time_point start);
/// Runs the main run loop until the condition holds.
void runUntil(const std::function<bool()> &done);
/// Writes a property list below the temporary folder, folders included.
void writePropertyList(id list, NSString *name);
/// An element of a selection.
[[nodiscard]] NSDictionary *component(NSString *location);
/// A media selection of that many packages, where the next pane looks for it.
void writeSelection(int count);
/// A pane that has started as the settings say.
VantInstallation *createPane(BenchObserver *observer);
/// A window of its own on the screen for a view.
NSWindow *windowWith(NSView *content);
/// A pane on the screen that installs nothing until it is told to.
VantInstallation *shownPane(BenchObserver *observer);
/// Handles the application's events until the condition holds; how many turns took longer than a frame.
int handleEventsUntil(const std::function<bool()> &done);

} // namespace vant::bench
