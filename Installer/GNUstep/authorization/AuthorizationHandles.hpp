#pragma once
#include <Security/Authorization.h>

#include <string>
#include <vector>

namespace vant {

/// A handle without rights. Its value is never used again, so a freed handle stays unknown for good. Any thread.
[[nodiscard]] AuthorizationRef makeHandle();

/// Whether the handle was made and not yet freed. Any thread.
[[nodiscard]] bool isHandle(AuthorizationRef handle);

/// Adds rights to a handle; nothing happens to an unknown one. Any thread.
void grantRights(AuthorizationRef handle, const std::vector<std::string> &names);

/// Whether the handle has every one of the rights; an unknown handle has none, not even of an empty list. Any thread.
[[nodiscard]] bool hasRights(AuthorizationRef handle, const std::vector<std::string> &names);

/// Gives up a handle; false when it is unknown. Any thread.
bool freeHandle(AuthorizationRef handle);

} // namespace vant
