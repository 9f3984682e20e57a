#pragma once
#include <string_view>

namespace vant {

/// What a failed download leads to.
enum class FailureOutcome {
    Retry,       ///< the address that was started last is fetched again
    NetworkLost, ///< the retries are used up; the code is kept
    CannotWrite, ///< no retry can help; the code is kept and the progress goes back to nothing
    Final,       ///< the code is kept
};

/// Outcome for a code of the platform's URL errors when `retriesUsed` retries have been made for the address.
[[nodiscard]] FailureOutcome failureOutcome(int code, int retriesUsed) noexcept;

/// The trace message that says which class of failure the code belongs to.
[[nodiscard]] std::string_view failureTrace(int code) noexcept;

/// Whether the pane now installs what it has got without the network. Once per pane: `fallenBack` says that it has.
[[nodiscard]] bool fallsBack(FailureOutcome outcome, bool fallenBack) noexcept;

} // namespace vant
