#include "GNUstep/tools/process/Worker.hpp"

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <exception>
#include <fstream>
#include <new>

namespace vant::tools {

namespace {

/// What a worker may allocate; with the libraries' own pages it stays below 64 MB.
constexpr rlim_t memoryLimit = rlim_t{48} << 20;
constexpr int watchSeconds = 5;

/// Exit statuses that no library uses by itself.
enum Status { doneStatus = 40, failedStatus, stuckStatus, outOfMemoryStatus };

constexpr std::array requestsToEnd{SIGTERM, SIGINT, SIGHUP};

sigset_t setOf(bool withChild) {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : requestsToEnd)
        sigaddset(&signals, number);
    if (withChild)
        sigaddset(&signals, SIGCHLD);
    return signals;
}

/// Bytes of data that this process has already; an instrumented build has more than any limit.
rlim_t dataSize() {
    std::ifstream file("/proc/self/statm");
    std::array<rlim_t, 6> pages{};
    for (auto &number : pages)
        file >> number;
    return pages.back() * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE));
}

void limitMemory() {
    rlimit limit{};
    ::getrlimit(RLIMIT_DATA, &limit);
    if (dataSize() >= memoryLimit)
        return;
    limit.rlim_cur = std::min(memoryLimit, limit.rlim_max);
    ::setrlimit(RLIMIT_DATA, &limit);
}

[[noreturn]] void doWork(const std::function<bool(const Watchdog &)> &work, pid_t parent) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent)
        ::_exit(failedStatus);
    limitMemory();
    int status = failedStatus;
    try {
        const Watchdog watchdog(watchSeconds, stuckStatus);
        status = work(watchdog) ? doneStatus : failedStatus;
    } catch (const std::bad_alloc &) {
        status = outOfMemoryStatus;
    }
    std::fflush(nullptr);
    ::_exit(status);
}

WorkEnd endFrom(int status) {
    if (!WIFEXITED(status))
        return WorkEnd::Crashed;
    switch (WEXITSTATUS(status)) {
    case doneStatus:
        return WorkEnd::Done;
    case failedStatus:
        return WorkEnd::Failed;
    case stuckStatus:
        return WorkEnd::Stuck;
    case outOfMemoryStatus:
        return WorkEnd::OutOfMemory;
    default:
        return WorkEnd::Crashed;
    }
}

WorkEnd waitFor(pid_t child, const sigset_t &signals) {
    bool wasAskedToEnd = false;
    int status = 0;
    while (::waitpid(child, &status, WNOHANG) == 0) {
        int number = 0;
        ::sigwait(&signals, &number);
        if (number == SIGCHLD)
            continue;
        wasAskedToEnd = true;
        ::kill(child, SIGTERM);
    }
    const auto end = endFrom(status);
    return wasAskedToEnd && end != WorkEnd::Done ? WorkEnd::Interrupted : end;
}

} // namespace

WorkEnd inWorker(const std::function<bool(const Watchdog &)> &work) {
    const auto signals = setOf(true);
    sigset_t before;
    std::signal(SIGCHLD, SIG_DFL); // ignored by whoever started this, children would end unseen
    ::sigprocmask(SIG_BLOCK, &signals, &before);
    const pid_t parent = ::getpid();
    const pid_t child = ::fork();
    if (child == 0) {
        for (const int number : requestsToEnd)
            std::signal(number, SIG_DFL);
        ::sigprocmask(SIG_SETMASK, &before, nullptr);
        doWork(work, parent);
    }
    const auto end = child < 0 ? WorkEnd::OutOfMemory : waitFor(child, signals);
    ::sigprocmask(SIG_SETMASK, &before, nullptr);
    return end;
}

std::string_view sentenceFor(WorkEnd end) {
    switch (end) {
    case WorkEnd::Stuck:
        return "Reading the archive made no progress for 5 seconds";
    case WorkEnd::OutOfMemory:
        return "Reading the archive needs too much memory";
    case WorkEnd::Crashed:
        return "The archive's reader came to an unexpected end";
    case WorkEnd::Interrupted:
        return "Interrupted";
    default:
        return "";
    }
}

void liftMemoryLimit() {
    rlimit limit{};
    ::getrlimit(RLIMIT_DATA, &limit);
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_DATA, &limit);
}

Uninterrupted::Uninterrupted() {
    const auto signals = setOf(false);
    ::sigprocmask(SIG_BLOCK, &signals, nullptr);
}

Uninterrupted::~Uninterrupted() {
    const auto signals = setOf(false);
    ::sigprocmask(SIG_UNBLOCK, &signals, nullptr);
}

} // namespace vant::tools
