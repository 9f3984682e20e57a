#pragma once
#include <array>
#include <string>
#include <string_view>

namespace vant {

/// The system's package installer.
inline constexpr const char *installerTool = "/usr/sbin/installer";

/// Its arguments for one package, in order. The target is always the root volume.
[[nodiscard]] std::array<std::string, 5> installerArguments(std::string_view packagePath);

} // namespace vant
