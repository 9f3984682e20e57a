#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace vant::host {

/// A process's arguments with the language of a known "-Language CODE" added under the platform's own option. Of
/// several codes the last holds.
[[nodiscard]] std::vector<std::string> withLanguageFolder(std::vector<std::string> arguments, std::string_view option);

} // namespace vant::host
