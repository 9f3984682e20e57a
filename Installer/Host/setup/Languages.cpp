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

std::vector<std::string> withLanguageFolder(std::vector<std::string> arguments) {
    std::optional<std::string_view> folder;
    for (std::size_t i = 1; i + 1 < arguments.size(); ++i) {
        if (arguments[i] == "-Language")
            folder = languageFolder(arguments[i + 1]);
    }
    if (folder) {
        arguments.emplace_back("-NSLanguages");
        arguments.push_back("(\"" + std::string(*folder) + "\")");
    }
    return arguments;
}

} // namespace vant::host
