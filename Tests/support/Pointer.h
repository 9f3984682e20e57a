#pragma once
#import <AppKit/AppKit.h>
#include <functional>
#include <string>

/// A real pointer and a real keyboard, moved and pressed by xdotool on a display of the test's own
/// (Tests/with-display --alone). Every press is made once, when the window that is to take it has the keys.
namespace vant::test {

/// Makes the process an application with a display, as a host does at its start; false when there is no display.
[[nodiscard]] bool becomeApplication();

/// Runs xdotool with its arguments; true when it succeeded. Any thread.
bool xdotool(const std::string &arguments);

/// Handles the application's events until the condition holds; false when it did not within the time.
[[nodiscard]] bool handleEventsUntil(const std::function<bool()> &condition, double seconds = 10.0);

/// Handles the application's events until none comes for a moment.
void settle();

/// Waits until the window has the keys for good: the display and the window manager say so, and the application has
/// heard all that they had to say before. False when it did not come to that within ten seconds.
[[nodiscard]] bool takesKeys(NSWindow *window);

/// Waits until a new window has the keys, and has been moved by the window manager to another place, where it stays:
/// while it is being framed it moves once more, and a press would land beside what it was meant for.
[[nodiscard]] bool settlesDown(NSWindow *window);

/// Waits for the keys of a window that is known by its title, seen from a thread beside the main one, which handles the
/// events.
[[nodiscard]] bool isGivenKeys(const std::string &title);

/// Runs xdotool as a hand beside the screen, while the application handles its events; true when it succeeded.
[[nodiscard]] bool handMakes(const std::string &arguments);

/// xdotool's arguments that move the pointer to a point of the window's content, counted from its lower left.
[[nodiscard]] std::string moveTo(NSWindow *window, NSPoint point);

/// Clicks at a point of the window's content, as a person does who keeps the button down until it looks pressed.
/// Without that, on a machine that is very busy, the platform now and then handles the release before the press, and
/// then waits for another release for good. False when the application did not take the press.
[[nodiscard]] bool handClicks(NSWindow *window, NSPoint point);

inline constexpr auto pressOfButton = " sleep 0.1 mousedown 1";

/// The pointer never stands still for long. Without that last movement a release that the platform has read while it
/// asked where the pointer is would lie unseen until something else happens.
inline constexpr auto releaseOfButton = " sleep 0.1 mouseup 1 sleep 0.1 mousemove_relative 1 0 ";

/// A click whose effect nobody waits for.
inline const std::string pressAndRelease = std::string(pressOfButton) + releaseOfButton;

} // namespace vant::test
