#pragma once
#include "report/Options.hpp"
#include "report/Report.hpp"

#include <string>

namespace vant::media {

/// Looks at one media folder (an empty path: at the site alone) as the options ask for. `tools` is the folder that
/// holds the tool for archives. Says on a terminal how far it is. Throws std::runtime_error when it cannot be done at
/// all. Main thread.
[[nodiscard]] Report look(const Options &options, const std::string &media, const std::string &tools);

} // namespace vant::media
