#pragma once
#include <string>
#include <vector>

namespace vant::host {

/// A process's arguments with the languages of a known "-Language CODE" added as the platform's own setting. Of several
/// codes the last holds.
[[nodiscard]] std::vector<std::string> withLanguageFolder(std::vector<std::string> arguments);

} // namespace vant::host
