#pragma once
#include <optional>
#include <string_view>

namespace vant::host {

/// The language folder ("fr" of fr.lproj) for one of the installer's language codes ("FN"); nothing for any other code.
[[nodiscard]] std::optional<std::string_view> languageFolder(std::string_view code) noexcept;

} // namespace vant::host
