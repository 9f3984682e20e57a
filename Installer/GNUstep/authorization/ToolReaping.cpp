#include "GNUstep/authorization/ToolReaping.hpp"

#include "GNUstep/process/ImportedFunction.hpp"
#include "GNUstep/process/Uninterrupted.hpp"

#include <list>
#include <mutex>
#include <sys/wait.h>

namespace vant {

struct StartedTool {
    pid_t process;
    std::optional<int> status = std::nullopt; ///< once it has been reaped
    std::list<StartedTool>::iterator place = {};
};

namespace {

struct Tools {
    std::mutex mutex;
    std::list<StartedTool> started;
};

/// Never destroyed: a thread may still wait for a tool when the process ends.
Tools &tools() {
    static auto &all = *new Tools;
    return all;
}

/// Under the mutex, so that a process id cannot have become another child's.
void reapNow(StartedTool &tool) {
    int status = 0;
    if (::waitpid(tool.process, &status, WNOHANG) == tool.process)
        tool.status = status;
}

StartedTool *unreapedTool(pid_t process) {
    for (StartedTool &tool : tools().started)
        if (tool.process == process && !tool.status)
            return &tool;
    return nullptr;
}

/// In place of GNUstep's `waitpid`. A tool that has ended stands before other children, so it is reaped here, and its
/// status is kept for whoever waits for it.
pid_t waitForChild(pid_t child, int *status, int options) {
    if (child != -1 || (options & WNOHANG) == 0)
        return ::waitpid(child, status, options);
    const std::lock_guard lock(tools().mutex);
    for (;;) {
        siginfo_t ended{};
        if (::waitid(P_ALL, 0, &ended, WEXITED | WNOHANG | WNOWAIT) != 0)
            return -1;
        if (ended.si_pid == 0)
            return 0;
        if (StartedTool *tool = unreapedTool(ended.si_pid))
            reapNow(*tool);
        else if (const pid_t reaped = ::waitpid(ended.si_pid, status, WNOHANG); reaped > 0)
            return reaped;
    }
}

const bool isGuarded =
    replaceImport("libgnustep-base.so", "waitpid", reinterpret_cast<void *>(&waitForChild)); // when the layer is loaded

bool isReaped(const StartedTool &tool) {
    const std::lock_guard lock(tools().mutex);
    return tool.status.has_value();
}

} // namespace

StartedTool *startTool(const std::function<pid_t()> &spawn) {
    const std::lock_guard lock(tools().mutex);
    const pid_t process = spawn();
    if (process <= 0)
        return nullptr;
    StartedTool &tool = tools().started.emplace_back(StartedTool{.process = process});
    tool.place = std::prev(tools().started.end());
    return &tool;
}

pid_t processOf(const StartedTool &tool) noexcept {
    return tool.process;
}

std::optional<int> reapTool(StartedTool *tool) {
    siginfo_t ended{};
    // Not reaped by this wait, because it takes no lock.
    if (!isReaped(*tool))
        (void)uninterrupted(
            [&] { return ::waitid(P_PID, static_cast<id_t>(tool->process), &ended, WEXITED | WNOWAIT); });
    const std::lock_guard lock(tools().mutex);
    if (!tool->status)
        reapNow(*tool);
    const auto status = tool->status;
    tools().started.erase(tool->place);
    return status;
}

} // namespace vant
