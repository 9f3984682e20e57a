#include "install/status/InstallingText.hpp"

#include <algorithm>
#include <array>

namespace vant {

namespace {

using namespace std::string_view_literals;

constexpr std::array wordFirst{"EN"sv, "FN"sv, "CP"sv, "CT"sv, "DT"sv, "PT"sv, "IT"sv, "SP"sv};
constexpr std::array nameFirst{"KR"sv, "GR"sv};

template<class Codes>
bool holds(const Codes &codes, std::string_view code) noexcept {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

std::string joined(std::string_view first, std::string_view second) {
    std::string text(first);
    return text.append(" ").append(second).append("...");
}

} // namespace

InstallingText installingText(std::string_view languageCode, std::string_view word, std::string_view componentName) {
    if (holds(nameFirst, languageCode))
        return {.text = joined(componentName, word), .trace = "Language 2: Korean and German"};
    if (holds(wordFirst, languageCode))
        return {.text = joined(word, componentName), .trace = "Language 1"};
    return {.text = joined(word, componentName), .trace = "Language Default: English"};
}

} // namespace vant
