#include "base/Languages.hpp"

#include <algorithm>
#include <iterator>

namespace vant {
namespace {

using enum WordOrder;
using enum Script;

// clang-format off
constexpr Language table[] = {
    {"EN", "en",      VerbFirst, Latin},
    {"FN", "fr",      VerbFirst, Latin},
    {"GR", "de",      NameFirst, Latin},
    {"IT", "it",      VerbFirst, Latin},
    {"SP", "es",      VerbFirst, Latin},
    {"PT", "pt",      VerbFirst, Latin},
    {"DT", "nl",      VerbFirst, Latin},
    {"KR", "ko",      NameFirst, Korean},
    {"CP", "zh-Hans", VerbFirst, SimplifiedChinese},
    {"CT", "zh-Hant", VerbFirst, TraditionalChinese},
};
// clang-format on

template<class Test>
const Language *findLanguage(Test test) noexcept {
    const auto *const found = std::ranges::find_if(table, test);
    return found == std::end(table) ? nullptr : found;
}

} // namespace

std::span<const Language> languages() noexcept {
    return table;
}

const Language *languageOfCode(std::string_view code) noexcept {
    return findLanguage([code](const Language &language) { return language.code == code; });
}

const Language *languageOfLocale(std::string_view locale) noexcept {
    return findLanguage([locale](const Language &language) { return locale.starts_with(language.folder); });
}

} // namespace vant
