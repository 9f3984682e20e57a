#pragma once
#include <span>
#include <string>
#include <string_view>

namespace vant {

/// The texts of the administrator panel in one language, in UTF-8.
struct PanelTexts {
    std::string_view language; ///< As folders of resources are called: "de", "zh-Hans".
    std::string_view title;
    std::string_view headline; ///< Has "%@" for the host's name.
    std::string_view detail;
    std::string_view userName;
    std::string_view grant;
    std::string_view cancel;
};

/// One row for each of the ten languages.
[[nodiscard]] std::span<const PanelTexts> allPanelTexts() noexcept;

/// The texts for the first of the user's languages that there are some for, else English. A language is named by its
/// code, with or without region ("pt_BR", "zh-TW"), or as GNUstep does ("German").
[[nodiscard]] const PanelTexts &panelTexts(std::span<const std::string> languages) noexcept;

} // namespace vant
