#include "GNUstep/authorization/ChildEndings.hpp"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <mutex>
#include <sys/wait.h>

namespace vant {
namespace {

struct Ending {
    std::atomic<pid_t> child = 0;
    std::atomic<int> status = 0;
};

// Written by a signal handler: lock-free, of fixed size, and never destroyed before the process.
constexpr std::uint32_t historyLength = 1024;
std::array<Ending, historyLength> history;
std::atomic<std::uint32_t> historyCount = 0;
std::array<std::atomic<pid_t>, 64> watched;
struct sigaction previous;
struct sigaction own;

int waitStatus(const siginfo_t &information) noexcept {
    constexpr int coreDumped = 0x80;
    if (information.si_code == CLD_EXITED)
        return (information.si_status & 0xff) << 8;
    return information.si_status | (information.si_code == CLD_DUMPED ? coreDumped : 0);
}

void record(const siginfo_t &information) noexcept {
    const int code = information.si_code;
    if (code != CLD_EXITED && code != CLD_KILLED && code != CLD_DUMPED)
        return;
    // Handlers may run on several threads at once: each takes an entry of its own.
    Ending &ending = history[historyCount++ % historyLength];
    ending.child = 0;
    ending.status = waitStatus(information);
    ending.child = information.si_pid;
}

void callPrevious(int signal, siginfo_t *information, void *context) noexcept {
    if ((previous.sa_flags & SA_SIGINFO) != 0)
        previous.sa_sigaction(signal, information, context);
    else if (previous.sa_handler != SIG_DFL && previous.sa_handler != SIG_IGN)
        previous.sa_handler(signal);
}

void handle(int signal, siginfo_t *information, void *context) {
    const int savedError = errno;
    record(*information);
    for (const auto &slot : watched) {
        const pid_t child = slot;
        siginfo_t peeked = {};
        if (child != 0 && waitid(P_PID, static_cast<id_t>(child), &peeked, WEXITED | WNOHANG | WNOWAIT) == 0 &&
            peeked.si_pid == child)
            record(peeked);
    }
    callPrevious(signal, information, context);
    // GNUstep's handler has put itself back in place.
    sigaction(SIGCHLD, &own, nullptr);
    errno = savedError;
}

void installHandler() {
    sigaction(SIGCHLD, nullptr, &previous);
    const bool isPlain = (previous.sa_flags & SA_SIGINFO) == 0;
    if (isPlain && previous.sa_handler == SIG_IGN)
        return;
    own = previous;
    // Where nobody handled the signal so far, nobody expects it to interrupt a system call.
    if (isPlain && previous.sa_handler == SIG_DFL)
        own.sa_flags |= SA_RESTART;
    own.sa_flags |= SA_SIGINFO;
    own.sa_sigaction = handle;
    sigaction(SIGCHLD, &own, nullptr);
}

} // namespace

std::uint32_t childEndingsMark() {
    static std::once_flag once;
    std::call_once(once, installHandler);
    return historyCount;
}

void watchChild(pid_t child) {
    for (auto &slot : watched) {
        pid_t free = 0;
        if (slot.compare_exchange_strong(free, child))
            return;
    }
}

void unwatchChild(pid_t child) {
    for (auto &slot : watched) {
        pid_t expected = child;
        slot.compare_exchange_strong(expected, 0);
    }
}

std::optional<int> childEnding(pid_t child, std::uint32_t since) {
    const std::uint32_t count = historyCount;
    for (std::uint32_t i = std::max(since, count - std::min(count, historyLength)); i != count; ++i)
        if (history[i % historyLength].child == child)
            return history[i % historyLength].status;
    return std::nullopt;
}

} // namespace vant
