#pragma once
#include <Security/Authorization.h>

#include <chrono>
#include <string>
#include <vector>

namespace vant {

/// A handle's standing towards a set of rights: `expired` when it had all of them, but some no longer.
enum class RightsState { granted, expired, missing };

/// A handle without rights. Its value is never used again, so a freed handle stays unknown for good. Any thread.
[[nodiscard]] AuthorizationRef makeHandle();

/// Whether the handle was made and not yet freed. Any thread.
[[nodiscard]] bool isHandle(AuthorizationRef handle);

/// Adds rights to a handle, or prolongs them; nothing happens to an unknown one. Any thread.
void grantRights(AuthorizationRef handle, const std::vector<std::string> &names,
                 std::chrono::steady_clock::time_point expiry);

/// Whether the handle has every one of the rights at that time; they are `missing` for an unknown handle. Any thread.
[[nodiscard]] RightsState rightsState(AuthorizationRef handle, const std::vector<std::string> &names,
                                      std::chrono::steady_clock::time_point now);

/// Gives up a handle; false when it is unknown. Any thread.
bool freeHandle(AuthorizationRef handle);

} // namespace vant
