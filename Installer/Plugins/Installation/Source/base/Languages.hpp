#pragma once
#include <span>
#include <string_view>

namespace vant {

/// How a sentence such as "Installing Pressdeck" is put together.
enum class WordOrder { VerbFirst, NameFirst };

/// What a typeface must draw.
enum class Script { Latin, Korean, SimplifiedChinese, TraditionalChinese };

/// A language that the pane and its host speak. What they say lies in the string tables of its folder.
struct Language {
    std::string_view code;   ///< as the host's string tables and the media name it: "FN"
    std::string_view folder; ///< as the platform names it: "fr" of fr.lproj
    WordOrder wordOrder;
    Script script;
};

/// Every language, English first.
[[nodiscard]] std::span<const Language> languages() noexcept;

/// The language of a code, compared exactly; null for any other.
[[nodiscard]] const Language *languageOfCode(std::string_view code) noexcept;

/// The language of a locale such as "fr" or "zh-Hant-TW", by its beginning; null for any other.
[[nodiscard]] const Language *languageOfLocale(std::string_view locale) noexcept;

} // namespace vant
