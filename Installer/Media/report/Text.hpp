#pragma once
#include "report/Report.hpp"

#include <string>
#include <string_view>

namespace vant::media {

/// The text on one line, without what a terminal would act upon: control characters are written as escapes.
[[nodiscard]] std::string printable(std::string_view text);

/// The plan for a reader.
[[nodiscard]] std::string planText(const Report &report);

/// What a site holds and what becomes of it, for a reader; empty when none was visited.
[[nodiscard]] std::string siteText(const Report &report);

/// The findings for a reader, one a line, and their count.
[[nodiscard]] std::string findingsText(const Report &report, bool isColoured);

} // namespace vant::media
