#include "GNUstep/authorization/PrivilegedTool.hpp"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <pthread.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace vant {
namespace {

constexpr size_t reaperStack = size_t{256} * 1024;

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor() {
        if (number_ >= 0)
            close(number_);
    }
    [[nodiscard]] int number() const { return number_; }
    int release() { return std::exchange(number_, -1); }

private:
    int number_;
};

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

// One may be tempted to collect every child in one place with waitpid(-1), but that would take the exit status from
// under the tasks that the host itself waits for. A wait for one process id, begun while that process cannot have been
// replaced, touches no other child.
void *reap(void *context) {
    const auto child = static_cast<pid_t>(reinterpret_cast<intptr_t>(context));
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    return nullptr;
}

/// Waits for the child on a small thread of its own, on which no signal of the host is delivered.
void reapInBackground(pid_t child) {
    sigset_t all;
    sigset_t previous;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &previous);
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
    pthread_attr_setstacksize(&attributes, reaperStack);
    void *const context = reinterpret_cast<void *>(static_cast<intptr_t>(child)); // NOLINT(performance-no-int-to-ptr)
    pthread_t thread{};
    pthread_create(&thread, &attributes, reap, context);
    pthread_attr_destroy(&attributes);
    pthread_sigmask(SIG_SETMASK, &previous, nullptr);
}

bool spawn(const std::string &path, char *const *arguments, const SpawnActions &actions) {
    const std::string file = toolLocation(path);
    std::vector<char *> vector = argumentVector(path, arguments);
    pid_t child = 0;
    if (posix_spawn(&child, file.c_str(), actions.get(), nullptr, vector.data(), environ) != 0)
        return false;
    reapInBackground(child);
    return true;
}

ToolLaunch launchWithChannel(const std::string &path, char *const *arguments, FILE **channel) {
    // Both ends close on exec: another child that held ours would keep the tool from seeing its end, one that held the
    // tool's would keep the end of the tool's output from us.
    std::array<int, 2> pair{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, pair.data()) != 0)
        return ToolLaunch::noChannel;
    Descriptor ours(pair[0]);
    const Descriptor theirs(pair[1]);
    SpawnActions actions;
    actions.inputAndOutputTo(theirs.number());
    if (!spawn(path, arguments, actions))
        return ToolLaunch::notExecutable;
    *channel = fdopen(ours.release(), "r+");
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

ToolLaunch launchTool(const std::string &path, char *const *arguments, FILE **channel) {
    if (channel != nullptr)
        return launchWithChannel(path, arguments, channel);
    SpawnActions actions;
    actions.inputFromNullDevice();
    return spawn(path, arguments, actions) ? ToolLaunch::started : ToolLaunch::notExecutable;
}

} // namespace vant
