#pragma once
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vant {

/// Positions of the records whose path an earlier record has, ascending. The first record of a path stays, and so does
/// every record without one.
[[nodiscard]] std::vector<std::size_t> redundantRecords(std::span<const std::optional<std::string>> installerPaths);

/// Positions of the records named after one of the two legacy scan packages, ascending.
[[nodiscard]] std::vector<std::size_t> legacyScanRecords(std::span<const std::optional<std::string>> componentNames);

/// Whether any path ends in the uninstaller's file name.
[[nodiscard]] bool holdsUninstaller(std::span<const std::optional<std::string>> installerPaths) noexcept;

} // namespace vant
