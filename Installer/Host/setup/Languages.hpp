#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vant::host {

/// The language folder ("fr" of fr.lproj) for one of the installer's language codes ("FN"); nothing for any other code.
[[nodiscard]] std::optional<std::string_view> languageFolder(std::string_view code) noexcept;

/// A process's arguments with the languages of a known "-Language CODE" added as the platform's own setting. Of several
/// codes the last holds.
[[nodiscard]] std::vector<std::string> withLanguageFolder(std::vector<std::string> arguments);

} // namespace vant::host
