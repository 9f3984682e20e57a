#pragma once
#include "report/Report.hpp"

#include <span>
#include <string>

namespace vant::media {

/// The version of the form below; a change that breaks a reader raises it.
inline constexpr int jsonVersion = 1;

/// The reports as a JSON document, indented, with a line feed at the end. Bytes that are not UTF-8 are replaced.
[[nodiscard]] std::string json(std::span<const Report> reports, const std::string &programVersion);

} // namespace vant::media
