#pragma once
#include <ctime>
#include <string>
#include <string_view>

namespace vant {

/// One entry of the trace log: level, local calendar time to the minute, message; ends in a blank and a line feed.
/// Weekday and month are English whatever the user's language.
[[nodiscard]] std::string traceEntry(std::string_view message, const std::tm &when);

} // namespace vant
