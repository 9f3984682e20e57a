#pragma once
#include <chrono>

namespace vant {

/// How a prompt has ended; `impossible` when the process has no application object to show the panel.
enum class PromptAnswer { granted, denied, cancelled, impossible };

/// A first prompt, or one for a right that was granted before and has expired.
enum class PromptReason { first, expired };

/// What the variable `VANT_AUTHORIZATION` answers in the user's place, else what the user answers to the panel.
[[nodiscard]] PromptAnswer promptAnswer(PromptReason reason);

/// When a right that is granted now expires; `time_point::max()` for never.
[[nodiscard]] std::chrono::steady_clock::time_point rightExpiry(std::chrono::steady_clock::time_point now);

/// Shows the administrator panel and returns after the answer. On the main thread the panel is modal; on any other it
/// is shown by the main thread, whose run loop goes on, and only the calling thread waits.
[[nodiscard]] PromptAnswer askAdministrator();

} // namespace vant
