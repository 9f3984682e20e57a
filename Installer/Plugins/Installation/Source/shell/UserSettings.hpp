#pragma once
#include <optional>
#include <string_view>

namespace vant {

/// What the user settings switch on, and only with exactly the text that stands for it: any other text, letter case
/// included, and an absent value leave a switch off.
struct SettingsSwitches {
    bool smartUpdate = false; ///< the web flow is wanted: "1"
    bool webError = false;    ///< the web flow has failed before: "1"
    bool debug = false;       ///< the trace log is written: "debug_on"
    bool operator==(const SettingsSwitches &) const = default;
};

/// The switches for the texts of "Smart Update", "WebError" and "Debug".
[[nodiscard]] constexpr SettingsSwitches settingsSwitches(std::optional<std::string_view> smartUpdate,
                                                          std::optional<std::string_view> webError,
                                                          std::optional<std::string_view> debug) noexcept {
    return {.smartUpdate = smartUpdate == "1", .webError = webError == "1", .debug = debug == "debug_on"};
}

/// Whether manuals are looked for, from the text of "VantWithoutConnection": exactly "no", that is, with a connection.
[[nodiscard]] constexpr bool areManualsLookedFor(std::optional<std::string_view> withoutConnection) noexcept {
    return withoutConnection == "no";
}

} // namespace vant
