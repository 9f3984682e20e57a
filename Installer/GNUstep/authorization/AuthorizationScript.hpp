#pragma once
#include <chrono>
#include <optional>
#include <string_view>

namespace vant {

/// How a prompt is answered: by the user, or in the user's place.
enum class ScriptedAnswer { ask, grant, deny, cancel };

/// What the variable `VANT_AUTHORIZATION` says.
struct AuthorizationScript {
    ScriptedAnswer first = ScriptedAnswer::ask;
    /// For a right that was granted before and has expired.
    ScriptedAnswer later = ScriptedAnswer::ask;
    /// How long a granted right lasts; nothing for good.
    std::optional<std::chrono::duration<double>> lifetime;
    bool operator==(const AuthorizationScript &) const = default;
};

/// "grant", "deny" or "cancel"; or "grant-expires:SECONDS" with ",ask", ",grant", ",deny" or ",cancel" behind it for
/// the later prompts, which ask without it. Anything else asks every time.
[[nodiscard]] AuthorizationScript authorizationScript(std::string_view variable) noexcept;

} // namespace vant
