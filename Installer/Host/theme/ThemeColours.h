#pragma once

namespace vant::host {

/// Components from 0 to 1.
struct Colour {
    double red;
    double green;
    double blue;
};

/// A colour from the six hexadecimal digits that designers write.
constexpr Colour rgb(unsigned digits) {
    return {((digits >> 16) & 0xFF) / 255.0, ((digits >> 8) & 0xFF) / 255.0, (digits & 0xFF) / 255.0};
}

constexpr Colour paper = rgb(0xFFFFFF);      ///< windows and lists
constexpr Colour ink = rgb(0x1F2937);        ///< text
constexpr Colour paleInk = rgb(0x9AA3B2);    ///< text of what is disabled
constexpr Colour accent = rgb(0x2F6FED);     ///< progress and focus
constexpr Colour paleAccent = rgb(0xDCE8FD); ///< selection
constexpr Colour groove = rgb(0xE4E8EF);     ///< the track of a bar
constexpr Colour line = rgb(0x7F8A9C);       ///< borders and knobs: three times as dark as paper
constexpr Colour faintLine = rgb(0xE6E9EF);  ///< separators, borders of what is disabled
constexpr Colour key = rgb(0xFBFCFD);        ///< the face of a button
constexpr Colour pressedKey = rgb(0xE9EDF3);
constexpr Colour caution = rgb(0xFFF4D6); ///< the ground of what the user should read

struct NamedColour {
    const char *name;
    Colour colour;
};

/// AppKit's system colours, as this theme has them.
constexpr NamedColour systemColours[] = {
    {"windowBackgroundColor", paper},
    {"windowFrameColor", paper},
    {"windowFrameTextColor", ink},
    {"controlBackgroundColor", paper},
    {"controlColor", key},
    {"controlHighlightColor", key},
    {"controlLightHighlightColor", paper},
    {"controlShadowColor", line},
    {"controlDarkShadowColor", line},
    {"controlTextColor", ink},
    {"disabledControlTextColor", paleInk},
    {"gridColor", faintLine},
    {"headerColor", key},
    {"headerTextColor", ink},
    {"highlightColor", paper},
    {"keyboardFocusIndicatorColor", accent},
    {"knobColor", line},
    {"scrollBarColor", paper},
    {"selectedControlColor", paleAccent},
    {"selectedControlTextColor", ink},
    {"alternateSelectedControlColor", paleAccent},
    {"alternateSelectedControlTextColor", ink},
    {"secondarySelectedControlColor", paleAccent},
    {"selectedKnobColor", paleInk},
    {"selectedMenuItemColor", paleAccent},
    {"selectedMenuItemTextColor", ink},
    {"selectedTextBackgroundColor", paleAccent},
    {"selectedTextColor", ink},
    {"shadowColor", line},
    {"textBackgroundColor", paper},
    {"textColor", ink},
    {"toolTipColor", rgb(0xF7F8FA)},
    {"rowBackgroundColor", paper},
    {"alternateRowBackgroundColor", rgb(0xF7F9FC)},
};

} // namespace vant::host
