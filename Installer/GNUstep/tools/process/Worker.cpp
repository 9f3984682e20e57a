#include "GNUstep/tools/process/Worker.hpp"

#include "GNUstep/tools/platform/WorkerLimits.hpp"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <exception>
#include <new>

namespace vant::tools {

namespace {

/// What a worker may allocate; with the libraries' own pages it stays below 64 MB.
constexpr std::size_t memoryLimit = std::size_t{48} << 20;
constexpr int watchSeconds = 5;

/// Exit statuses that no library uses by itself.
enum Status { doneStatus = 40, failedStatus, stuckStatus, outOfMemoryStatus };

constexpr std::array requestsToEnd{SIGTERM, SIGINT, SIGHUP};

/// To be told of a child's end at all: a signal that is ignored, as this one is by default, is dropped on macOS even
/// while it is blocked. And children of a process that was started with it ignored would end unseen.
void hear(int /*signal*/) {}

sigset_t setOf(bool withChild) {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : requestsToEnd)
        sigaddset(&signals, number);
    if (withChild)
        sigaddset(&signals, SIGCHLD);
    return signals;
}

[[noreturn]] void doWork(const std::function<bool(const Watchdog &)> &work, pid_t parent) {
    holdTo({.parent = parent, .memory = memoryLimit, .outOfMemoryStatus = outOfMemoryStatus});
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
    std::signal(SIGCHLD, hear);
    ::sigprocmask(SIG_BLOCK, &signals, &before);
    const pid_t parent = ::getpid();
    const pid_t child = ::fork();
    if (child == 0) {
        for (const int number : requestsToEnd)
            std::signal(number, SIG_DFL);
        std::signal(SIGCHLD, SIG_DFL);
        ::sigprocmask(SIG_SETMASK, &before, nullptr);
        doWork(work, parent);
    }
    const auto end = child < 0 ? WorkEnd::OutOfMemory : waitFor(child, signals);
    std::signal(SIGCHLD, SIG_DFL);
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

Uninterrupted::Uninterrupted() {
    const auto signals = setOf(false);
    ::sigprocmask(SIG_BLOCK, &signals, nullptr);
}

Uninterrupted::~Uninterrupted() {
    const auto signals = setOf(false);
    ::sigprocmask(SIG_UNBLOCK, &signals, nullptr);
}

} // namespace vant::tools
