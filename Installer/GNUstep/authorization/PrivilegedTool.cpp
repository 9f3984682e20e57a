#include "GNUstep/authorization/PrivilegedTool.hpp"

#include "GNUstep/authorization/ToolReaping.hpp"
#include "GNUstep/files/Descriptor.hpp"

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <pthread.h>
#include <spawn.h>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace vant {
namespace {

constexpr size_t reaperStack = size_t{256} * 1024;

class SpawnActions {
public:
    SpawnActions() { posix_spawn_file_actions_init(&actions_); }
    SpawnActions(const SpawnActions &) = delete;
    SpawnActions &operator=(const SpawnActions &) = delete;
    ~SpawnActions() { posix_spawn_file_actions_destroy(&actions_); }

    void inputFromNullDevice() { posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0); }
    void inputAndOutputTo(int descriptor) {
        posix_spawn_file_actions_adddup2(&actions_, descriptor, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions_, descriptor, STDOUT_FILENO);
    }
    [[nodiscard]] const posix_spawn_file_actions_t *get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

std::vector<char *> argumentVector(const std::string &path, char *const *arguments) {
    std::vector<char *> vector{const_cast<char *>(path.c_str())};
    for (; arguments != nullptr && *arguments != nullptr; ++arguments)
        vector.push_back(*arguments);
    vector.push_back(nullptr);
    return vector;
}

/// A child, and who is told of its end.
struct Child {
    ToolExit exit;
    ToolExitHandler onExit;
    StartedTool *tool = nullptr;
};

// One may be tempted to collect every child in one place with waitpid(-1), but that would take the exit status from
// under the tasks that the host itself waits for.
void *reap(void *context) {
    const std::unique_ptr<Child> child(static_cast<Child *>(context));
    child->exit.waitStatus = reapTool(child->tool);
    if (child->onExit != nullptr)
        child->onExit(child->exit);
    return nullptr;
}

/// Waits for the child on a small thread of its own, on which no signal of the host is delivered.
void reapInBackground(std::unique_ptr<Child> child) {
    sigset_t all;
    sigset_t previous;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &previous);
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
    pthread_attr_setstacksize(&attributes, reaperStack);
    pthread_t thread{};
    if (pthread_create(&thread, &attributes, reap, child.get()) == 0)
        (void)child.release();
    pthread_attr_destroy(&attributes);
    pthread_sigmask(SIG_SETMASK, &previous, nullptr);
}

bool spawn(const std::string &path, char *const *arguments, const SpawnActions &actions, ToolExitHandler onExit) {
    const std::string file = toolLocation(path);
    std::vector<char *> vector = argumentVector(path, arguments);
    auto child = std::make_unique<Child>(Child{.exit = {.path = path}, .onExit = onExit});
    child->exit.arguments.assign(vector.begin() + 1, vector.end() - 1);
    child->tool = startTool([&] {
        pid_t process = 0;
        const int error = posix_spawn(&process, file.c_str(), actions.get(), nullptr, vector.data(), environ);
        return error == 0 ? process : 0;
    });
    if (child->tool == nullptr)
        return false;
    child->exit.process = processOf(*child->tool);
    reapInBackground(std::move(child));
    return true;
}

ToolLaunch launchWithChannel(const std::string &path, char *const *arguments, FILE **channel, ToolExitHandler onExit) {
    // Both ends close on exec: another child that held ours would keep the tool from seeing its end, one that held the
    // tool's would keep the end of the tool's output from us.
    std::array<int, 2> pair{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, pair.data()) != 0)
        return ToolLaunch::noChannel;
    std::unique_ptr<FILE, decltype(&std::fclose)> ours(fdopen(pair[0], "r+"), std::fclose);
    const Descriptor theirs(pair[1]);
    SpawnActions actions;
    actions.inputAndOutputTo(theirs.get());
    if (!spawn(path, arguments, actions, onExit))
        return ToolLaunch::notExecutable;
    *channel = ours.release();
    return ToolLaunch::started;
}

} // namespace

std::string toolLocation(const std::string &path) {
    const char *const root = std::getenv("VANT_SYSTEM_ROOT");
    if (root == nullptr || *root == '\0' || !path.starts_with('/'))
        return path;
    std::string below = root + path;
    return access(below.c_str(), F_OK) == 0 ? below : path;
}

ToolLaunch launchTool(const std::string &path, char *const *arguments, FILE **channel, ToolExitHandler onExit) {
    if (channel != nullptr)
        return launchWithChannel(path, arguments, channel, onExit);
    SpawnActions actions;
    actions.inputFromNullDevice();
    return spawn(path, arguments, actions, onExit) ? ToolLaunch::started : ToolLaunch::notExecutable;
}

} // namespace vant
