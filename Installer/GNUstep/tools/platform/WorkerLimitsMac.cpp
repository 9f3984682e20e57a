#include "GNUstep/tools/platform/WorkerLimits.hpp"

#include <libproc.h>
#include <sys/event.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdint>
#include <limits>
#include <thread>

namespace vant::tools {

namespace {

constexpr std::uint64_t noLimit = std::numeric_limits<std::uint64_t>::max();
constexpr timespec betweenLooks{.tv_sec = 0, .tv_nsec = 20'000'000};

/// Bytes; the system holds nobody to RLIMIT_DATA, which is about `sbrk` alone.
std::atomic<std::uint64_t> memoryLimit = noLimit;

/// The memory that the system counts as this process's own, as Activity Monitor shows it.
std::uint64_t footprint() {
    rusage_info_v0 usage{};
    auto *const place = reinterpret_cast<rusage_info_t *>(&usage);
    return ::proc_pid_rusage(::getpid(), RUSAGE_INFO_V0, place) == 0 ? usage.ri_phys_footprint : 0;
}

/// Whether the queue tells of its process's end, which has perhaps come already; waits for a look's length.
bool hasEnded(int queue) {
    struct kevent event {};
    return ::kevent(queue, nullptr, 0, &event, 1, &betweenLooks) > 0;
}

[[noreturn]] void watch(int queue, int outOfMemoryStatus) {
    while (!hasEnded(queue))
        if (footprint() > memoryLimit)
            ::_exit(outOfMemoryStatus);
    ::raise(SIGKILL);
    ::_exit(outOfMemoryStatus);
}

} // namespace

void holdTo(const WorkerLimits &limits) {
    const int queue = ::kqueue();
    struct kevent event {};
    EV_SET(&event, static_cast<std::uintptr_t>(limits.parent), EVFILT_PROC, EV_ADD, NOTE_EXIT, 0, nullptr);
    // A parent that has ended before this is no longer the parent, whatever process has its number now.
    if (::kevent(queue, &event, 1, nullptr, 0, nullptr) != 0 || ::getppid() != limits.parent)
        ::raise(SIGKILL);
    memoryLimit = footprint() + limits.memory;
    std::thread(watch, queue, limits.outOfMemoryStatus).detach();
}

void liftMemoryLimit() {
    memoryLimit = noLimit;
}

} // namespace vant::tools
