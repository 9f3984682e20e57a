#include "ToolRun.hpp"

#include "Jail.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace fs = std::filesystem;

namespace vant::test {

namespace {

[[noreturn]] void becomeTool(const fs::path &tool, const std::vector<std::string> &arguments,
                             const Environment &environment, int output, int errors) {
    // Whatever started the tests may have switched it off.
    ::signal(SIGPIPE, SIG_DFL);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(errors, STDERR_FILENO);
    for (const auto &[name, value] : environment)
        value.empty() ? ::unsetenv(name.c_str()) : ::setenv(name.c_str(), value.c_str(), 1);
    std::vector<std::string> words{tool.string()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char *> pointers;
    std::ranges::transform(words, std::back_inserter(pointers), [](std::string &word) { return word.data(); });
    pointers.push_back(nullptr);
    ::execv(tool.c_str(), pointers.data());
    ::_exit(127);
}

/// Takes what is there; false at the end of the stream.
bool take(int from, std::string &text, std::vector<std::string> *writes) {
    char buffer[65536];
    const auto count = ::read(from, buffer, sizeof buffer);
    if (count <= 0)
        return false;
    text.append(buffer, static_cast<std::size_t>(count));
    if (writes != nullptr)
        writes->emplace_back(buffer, static_cast<std::size_t>(count));
    return true;
}

void collect(ToolRun &run, int output, int errors, pid_t child, std::chrono::seconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    pollfd waits[] = {{.fd = output, .events = POLLIN, .revents = 0}, {.fd = errors, .events = POLLIN, .revents = 0}};
    while (waits[0].fd >= 0 || waits[1].fd >= 0) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        if (left.count() <= 0 || ::poll(waits, 2, static_cast<int>(left.count())) <= 0)
            ::kill(child, SIGKILL);
        if (waits[0].revents != 0 && !take(output, run.output, &run.writes))
            waits[0].fd = -1;
        if (waits[1].revents != 0 && !take(errors, run.errors, nullptr))
            waits[1].fd = -1;
    }
}

double secondsOf(const timeval &time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

} // namespace

ToolRun runTool(const fs::path &tool, const std::vector<std::string> &arguments, const Environment &environment,
                Reader reader, std::chrono::seconds limit) {
    int output[2];
    int errors[2];
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, output) != 0 || ::pipe2(errors, O_CLOEXEC) != 0)
        throw std::runtime_error("no channel to the tool");
    const pid_t child = ::fork();
    if (child == 0)
        becomeTool(tool, arguments, environment, output[1], errors[1]);
    ::close(output[1]);
    ::close(errors[1]);
    if (reader == Reader::GoneAway)
        ::close(std::exchange(output[0], -1));
    ToolRun run;
    collect(run, output[0], errors[0], child, limit);
    int status = 0;
    rusage usage{};
    ::wait4(child, &status, 0, &usage);
    run.peakKilobytes = usage.ru_maxrss;
    run.cpuSeconds = secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    ::close(output[0]);
    ::close(errors[0]);
    return run;
}

fs::path dittoTool() {
    return VANT_DITTO;
}

fs::path installerTool() {
    return VANT_INSTALLER;
}

SmallDisk::SmallDisk(const fs::path &folder, const std::string &size) : folder_(folder) {
    fs::create_directories(folder);
    mounted_ = ::mount("none", folder.c_str(), "tmpfs", 0, ("size=" + size).c_str()) == 0;
}

SmallDisk::~SmallDisk() {
    if (mounted_)
        ::umount2(folder_.c_str(), MNT_DETACH);
}

std::vector<std::string> treeOf(const fs::path &folder) {
    std::vector<std::string> tree;
    if (!fs::exists(folder))
        return tree;
    for (const auto &entry : fs::recursive_directory_iterator(folder)) {
        auto row = fs::relative(entry.path().parent_path(), folder) / entry.path().filename();
        auto text = row.lexically_normal().string();
        if (entry.is_symlink())
            text += " -> " + fs::read_symlink(entry.path()).string();
        else if (entry.is_regular_file())
            text += " = " + contentsOf(entry.path());
        tree.push_back(text);
    }
    std::ranges::sort(tree);
    return tree;
}

} // namespace vant::test
