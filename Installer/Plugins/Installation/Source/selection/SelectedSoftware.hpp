#pragma once
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vant {

/// The kinds of software that are reported to the host, of those named in the selections: each once, in order of first
/// appearance, without those that are listed already. The views are of static storage.
[[nodiscard]] std::vector<std::string_view> newlySelectedSoftware(std::span<const std::optional<std::string>> kinds,
                                                                  std::span<const std::optional<std::string>> listed);

} // namespace vant
