#pragma once
#include "ui/CellFrame.hpp"
#import <Foundation/Foundation.h>

namespace vant {

/// The platform's rectangle as the rules' frame.
[[nodiscard]] inline Frame frame(NSRect rect) {
    return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

/// The rules' frame as the platform's rectangle.
[[nodiscard]] inline NSRect nsRect(const Frame &frame) {
    return NSMakeRect(frame.x, frame.y, frame.width, frame.height);
}

} // namespace vant
