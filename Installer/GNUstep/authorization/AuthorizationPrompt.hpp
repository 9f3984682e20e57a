#pragma once

namespace vant {

enum class PromptAnswer { granted, denied, cancelled, impossible };

/// What the variable `VANT_AUTHORIZATION` answers in the user's place, else what the user answers to the panel.
[[nodiscard]] PromptAnswer promptAnswer();

/// Shows the administrator panel and returns after the answer; `impossible` when the process has no application object
/// to show it. Any thread: the panel itself runs on the main thread.
[[nodiscard]] PromptAnswer askAdministrator();

} // namespace vant
