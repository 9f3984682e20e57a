#include "install/status/InstallingText.hpp"

#include "base/Languages.hpp"

namespace vant {

namespace {

std::string joined(std::string_view first, std::string_view second) {
    std::string text(first);
    return text.append(" ").append(second).append("...");
}

} // namespace

InstallingText installingText(std::string_view languageCode, std::string_view word, std::string_view componentName) {
    const Language *language = languageOfCode(languageCode);
    if (!language)
        return {.text = joined(word, componentName), .trace = "Language Default: English"};
    if (language->wordOrder == WordOrder::NameFirst)
        return {.text = joined(componentName, word), .trace = "Language 2: Korean and German"};
    return {.text = joined(word, componentName), .trace = "Language 1"};
}

} // namespace vant
