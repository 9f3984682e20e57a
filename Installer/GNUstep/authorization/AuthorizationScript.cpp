#include "GNUstep/authorization/AuthorizationScript.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace vant {
namespace {

std::optional<ScriptedAnswer> answerNamed(std::string_view name) noexcept {
    constexpr std::array<std::pair<std::string_view, ScriptedAnswer>, 4> answers = {{
        {"ask", ScriptedAnswer::ask},
        {"grant", ScriptedAnswer::grant},
        {"deny", ScriptedAnswer::deny},
        {"cancel", ScriptedAnswer::cancel},
    }};
    const auto *const found = std::ranges::find(answers, name, &std::pair<std::string_view, ScriptedAnswer>::first);
    return found == answers.end() ? std::nullopt : std::optional(found->second);
}

std::optional<double> seconds(std::string_view text) noexcept {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    const bool isWhole = error == std::errc{} && end == text.data() + text.size();
    return isWhole && value >= 0 && value <= 1e9 ? std::optional(value) : std::nullopt;
}

} // namespace

AuthorizationScript authorizationScript(std::string_view variable) noexcept {
    constexpr std::string_view expiring = "grant-expires:";
    if (!variable.starts_with(expiring)) {
        const auto answer = answerNamed(variable).value_or(ScriptedAnswer::ask);
        return {.first = answer, .later = answer};
    }
    variable.remove_prefix(expiring.size());
    const auto comma = variable.find(',');
    const auto lifetime = seconds(variable.substr(0, comma));
    const auto later = answerNamed(comma == std::string_view::npos ? "ask" : variable.substr(comma + 1));
    if (!lifetime || !later)
        return {};
    return {.first = ScriptedAnswer::grant, .later = *later, .lifetime = std::chrono::duration<double>(*lifetime)};
}

} // namespace vant
