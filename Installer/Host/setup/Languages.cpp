#include "Languages.hpp"

#include <array>
#include <utility>

namespace vant::host {

// clang-format off
static constexpr std::array<std::pair<std::string_view, std::string_view>, 10> folders = {{
    {"EN", "en"},
    {"FN", "fr"},
    {"GR", "de"},
    {"IT", "it"},
    {"SP", "es"},
    {"PT", "pt"},
    {"DT", "nl"},
    {"KR", "ko"},
    {"CP", "zh-Hans"},
    {"CT", "zh-Hant"},
}};
// clang-format on

std::optional<std::string_view> languageFolder(std::string_view code) noexcept {
    for (const auto &[known, folder] : folders) {
        if (known == code)
            return folder;
    }
    return std::nullopt;
}

} // namespace vant::host
