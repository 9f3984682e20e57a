#pragma once
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vant::media {

/// The word of the list that was probably meant: the same but for letter case, blanks and marks, or at most two letters
/// off. Nothing when none is near.
[[nodiscard]] std::optional<std::string> probablyMeant(std::string_view word, std::span<const std::string> known);

/// Whether a shell reads the text otherwise than it stands when it is put between double quotes.
[[nodiscard]] bool isReadOtherwiseByShell(std::string_view text) noexcept;

} // namespace vant::media
