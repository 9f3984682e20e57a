#include "GNUstep/authorization/AuthorizationPrompt.hpp"

#include "GNUstep/authorization/AuthorizationScript.hpp"

#include <cstdlib>

namespace vant {
namespace {

AuthorizationScript currentScript() {
    const char *const variable = std::getenv("VANT_AUTHORIZATION");
    return authorizationScript(variable != nullptr ? variable : "");
}

} // namespace

PromptAnswer promptAnswer(PromptReason reason) {
    const auto script = currentScript();
    switch (reason == PromptReason::first ? script.first : script.later) {
    case ScriptedAnswer::grant:
        return PromptAnswer::granted;
    case ScriptedAnswer::deny:
        return PromptAnswer::denied;
    case ScriptedAnswer::cancel:
        return PromptAnswer::cancelled;
    case ScriptedAnswer::ask:
        break;
    }
    return askAdministrator();
}

std::chrono::steady_clock::time_point rightExpiry(std::chrono::steady_clock::time_point now) {
    using Clock = std::chrono::steady_clock;
    const auto lifetime = currentScript().lifetime;
    return lifetime ? now + std::chrono::duration_cast<Clock::duration>(*lifetime) : Clock::time_point::max();
}

} // namespace vant
