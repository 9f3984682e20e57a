#pragma once
#include <functional>
#include <string>

namespace vant::test {

/// Makes the process an application with a display, as a host does at its start; false when there is no display.
[[nodiscard]] bool becomeApplication();

/// Runs xdotool with its arguments, on a thread of the caller's; true when it succeeded.
bool xdotool(const std::string &arguments);

/// Handles the application's events until the condition holds; false when it did not within the time.
[[nodiscard]] bool handleEventsUntil(const std::function<bool()> &condition, double seconds = 10.0);

/// Handles the application's events until none comes for a moment.
void settle();

} // namespace vant::test
