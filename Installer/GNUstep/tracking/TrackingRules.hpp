#pragma once

namespace vant {

/// What a tracking area's options ask for, one member an option.
struct TrackingOptions {
    bool enteredAndExited = false;
    bool moved = false;
    bool cursor = false;
    bool whenFirstResponder = false;
    bool inKeyWindow = false;
    bool inActiveApplication = false;
    bool always = false;
    bool duringDrag = false;
};

/// The state of the view, its window and its application.
struct TrackingSurroundings {
    bool firstResponder = false;
    bool keyWindow = false;
    bool activeApplication = false;
};

/// What the owner of an area is sent.
struct TrackingMessages {
    bool exited = false;
    bool entered = false;
    bool cursorUpdate = false;
    bool cursorReset = false;
    bool moved = false;
    bool operator==(const TrackingMessages &) const = default;
};

/// The options of a set of the platform's bits.
[[nodiscard]] TrackingOptions trackingOptions(unsigned long bits) noexcept;

/// Whether the area follows the pointer at all just now.
[[nodiscard]] bool isActive(const TrackingOptions &options, const TrackingSurroundings &surroundings) noexcept;

/// The messages for a pointer that was inside, or not, and now is, or not.
[[nodiscard]] TrackingMessages messagesFor(const TrackingOptions &options, bool wasInside, bool isInside) noexcept;

} // namespace vant
