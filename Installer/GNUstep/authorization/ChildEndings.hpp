#pragma once
#include <cstdint>
#include <optional>
#include <sys/types.h>

namespace vant {

// How children of this process have ended, whoever reaps them. GNUstep collects every child of the process as soon as
// one of them ends, and drops the status of those that are no tasks of its own. The kernel's signal tells it too.

/// Where in the history of endings now is. The first call installs a handler for SIGCHLD, before the one that is there;
/// none while the signal is ignored. Any thread.
[[nodiscard]] std::uint32_t childEndingsMark();

/// Has the handler look after a child too whose own signal is merged with another's, until it is unwatched. Any thread.
void watchChild(pid_t child);
void unwatchChild(pid_t child);

/// The wait status of a child that was started after the mark, if its end was seen. Any thread.
[[nodiscard]] std::optional<int> childEnding(pid_t child, std::uint32_t since);

} // namespace vant
