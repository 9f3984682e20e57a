#include "GNUstep/tracking/TrackingRules.hpp"

namespace vant {

TrackingOptions trackingOptions(unsigned long bits) noexcept {
    const auto has = [bits](unsigned long bit) { return (bits & bit) != 0; };
    return {
        .enteredAndExited = has(0x01),
        .moved = has(0x02),
        .cursor = has(0x04),
        .whenFirstResponder = has(0x10),
        .inKeyWindow = has(0x20),
        .inActiveApplication = has(0x40),
        .always = has(0x80),
        .duringDrag = has(0x400),
    };
}

bool isActive(const TrackingOptions &options, const TrackingSurroundings &surroundings) noexcept {
    return options.always || (options.inActiveApplication && surroundings.activeApplication) ||
           (options.inKeyWindow && surroundings.keyWindow) ||
           (options.whenFirstResponder && surroundings.firstResponder);
}

TrackingMessages messagesFor(const TrackingOptions &options, bool wasInside, bool isInside) noexcept {
    return {
        .exited = options.enteredAndExited && wasInside && !isInside,
        .entered = options.enteredAndExited && !wasInside && isInside,
        .cursorUpdate = options.cursor && !wasInside && isInside,
        .cursorReset = options.cursor && wasInside && !isInside,
        .moved = options.moved && wasInside && isInside,
    };
}

} // namespace vant
