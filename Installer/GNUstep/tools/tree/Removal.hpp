#pragma once
#include <filesystem>

namespace vant::tools {

/// Removes a folder with all in it, as far as the system lets it, folders included that even their owner can't list or
/// write into. Links are removed, not followed.
void removeTree(const std::filesystem::path &folder) noexcept;

} // namespace vant::tools
