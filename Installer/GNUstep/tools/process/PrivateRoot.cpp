#include "GNUstep/tools/process/PrivateRoot.hpp"

#include "GNUstep/files/Descriptor.hpp"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>

namespace vant::tools {

namespace fs = std::filesystem;

namespace {

/// What of this machine is seen in the root, if it has it.
constexpr std::array shownFolders{"/usr/bin", "/usr/sbin", "/usr/lib", "/usr/lib32", "/usr/lib64", "/usr/share",
                                  "/bin",     "/sbin",     "/lib",     "/lib32",     "/lib64",     "/etc/alternatives"};
/// Everything that has to stand in the root for a run.
constexpr std::array mountPoints{
    "usr", "usr/bin", "usr/sbin", "usr/lib", "usr/lib32", "usr/lib64", "usr/share", "etc", "etc/alternatives",
    "bin", "sbin",    "lib",      "lib32",   "lib64",     "dev",       "proc"};
constexpr std::chrono::seconds probeLimit{10};

/// Remembers which of the mount points are missing, and removes those at the end.
class MountPoints {
public:
    explicit MountPoints(const fs::path &root) {
        for (const auto *name : mountPoints)
            if (std::error_code problem; fs::symlink_status(root / name, problem).type() == fs::file_type::not_found)
                missing_.push_back(root / name);
    }
    MountPoints(const MountPoints &) = delete;
    MountPoints &operator=(const MountPoints &) = delete;
    ~MountPoints() {
        std::error_code ignored;
        for (auto path = missing_.rbegin(); path != missing_.rend(); ++path)
            fs::remove(*path, ignored); // a folder with something in it stays
    }

private:
    std::vector<fs::path> missing_;
};

class Spawn {
public:
    Spawn() {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&actions_, STDERR_FILENO, STDOUT_FILENO);
        posix_spawnattr_init(&attributes_);
        sigset_t none;
        sigemptyset(&none);
        posix_spawnattr_setsigmask(&attributes_, &none);
        sigset_t pipe = none;
        sigaddset(&pipe, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes_, &pipe);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    Spawn(const Spawn &) = delete;
    Spawn &operator=(const Spawn &) = delete;
    ~Spawn() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }

    /// The child's process id, -1 when the program can't be run.
    [[nodiscard]] pid_t start(std::vector<std::string> words) const {
        std::vector<char *> pointers;
        std::ranges::transform(words, std::back_inserter(pointers), [](std::string &word) { return word.data(); });
        pointers.push_back(nullptr);
        pid_t child = -1;
        const auto *program = words.front().c_str();
        return posix_spawnp(&child, program, &actions_, &attributes_, pointers.data(), environ) == 0 ? child : -1;
    }

private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

int waitFor(pid_t child, std::chrono::milliseconds limit) {
    const Descriptor process(static_cast<int>(::syscall(SYS_pidfd_open, child, 0)));
    pollfd wait{.fd = process.get(), .events = POLLIN, .revents = 0};
    if (::poll(&wait, 1, static_cast<int>(limit.count())) != 1)
        ::kill(child, SIGKILL);
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void add(std::vector<std::string> &words, std::initializer_list<std::string> more) {
    words.insert(words.end(), more);
}

} // namespace

std::vector<std::string> PrivateRoot::wrapping(const std::string &folder, const Variables &variables) const {
    std::vector<std::string> words{"bwrap",         "--unshare-all",     "--uid",      "0",      "--gid", "0",
                                   "--new-session", "--die-with-parent", "--clearenv", "--bind", root_,   "/"};
    for (const auto *shown : shownFolders) {
        std::error_code problem;
        if (fs::is_symlink(shown, problem) && !fs::exists(fs::symlink_status(root_ / (shown + 1), problem)))
            add(words, {"--symlink", fs::read_symlink(shown), shown});
        else if (fs::is_directory(shown, problem) &&
                 !fs::is_symlink(root_ / fs::path(shown + 1).parent_path(), problem))
            add(words, {"--ro-bind", shown, shown});
    }
    add(words, {"--dev", "/dev", "--proc", "/proc", "--chdir", folder});
    for (const auto &[name, value] : variables)
        add(words, {"--setenv", name, value});
    return words;
}

int PrivateRoot::run(const std::string &folder, const std::vector<std::string> &command, const Variables &variables,
                     std::chrono::seconds limit) const {
    const MountPoints removedAfterwards(root_);
    auto words = wrapping(folder, variables);
    words.emplace_back("--");
    words.insert(words.end(), command.begin(), command.end());
    const auto child = Spawn().start(words);
    return child < 0 ? -1 : waitFor(child, limit);
}

bool PrivateRoot::isAvailable() const {
    return run("/", {"/usr/bin/true"}, {}, probeLimit) == 0;
}

} // namespace vant::tools
