#pragma once
#include <functional>
#include <optional>
#include <sys/types.h>

namespace vant {

// GNUstep collects every child of the process as soon as one of them ends, and drops the status of those that are no
// tasks of its own. Its question for any child is therefore answered with children that are no tools.

/// A tool that has been started and not yet waited for.
struct StartedTool;

/// Starts a tool by a function that gives its process id, or 0 when there is none. Nobody of this process's libraries
/// can reap the tool between its start and the end of this call. Null when there is no tool. Any thread.
[[nodiscard]] StartedTool *startTool(const std::function<pid_t()> &spawn);

[[nodiscard]] pid_t processOf(const StartedTool &tool) noexcept;

/// Waits for the tool to end, reaps it and forgets it: its wait status, or nothing when the host has reaped it. Any
/// thread, once for each tool.
[[nodiscard]] std::optional<int> reapTool(StartedTool *tool);

} // namespace vant
