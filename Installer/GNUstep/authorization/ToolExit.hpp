#pragma once
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace vant {

/// The end of a tool. The wait status is nothing when somebody else has reaped the process.
struct ToolExit {
    std::string path;
    std::vector<std::string> arguments;
    pid_t process = 0;
    std::optional<int> waitStatus;
};

/// Who is told of a tool's end, on the thread that waited for it.
using ToolExitHandler = void (*)(const ToolExit &exit);

/// Posts VantPrivilegedToolDidExitNotification on the main thread. Any thread; returns at once.
void postToolExit(const ToolExit &exit);

} // namespace vant
