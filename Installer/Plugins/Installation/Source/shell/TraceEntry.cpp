#include "shell/TraceEntry.hpp"

#include <array>
#include <cstdio>

namespace vant {

namespace {

constexpr std::array weekdays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::array months{"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

/// The date as "Sun Nov 15 2026 02:16 AM".
std::string calendarText(const std::tm &when) {
    const int hour = when.tm_hour % 12 == 0 ? 12 : when.tm_hour % 12;
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%s %s %02d %d %02d:%02d %s",
                  weekdays.at(static_cast<std::size_t>(when.tm_wday)), months.at(static_cast<std::size_t>(when.tm_mon)),
                  when.tm_mday, when.tm_year + 1900, hour, when.tm_min, when.tm_hour < 12 ? "AM" : "PM");
    return text.data();
}

} // namespace

std::string traceEntry(std::string_view message, const std::tm &when) {
    std::string entry = "Information : " + calendarText(when) + " : [Installation Plugin] : ";
    entry += message;
    entry += " \n";
    return entry;
}

} // namespace vant
