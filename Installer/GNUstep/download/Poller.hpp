#pragma once
#include <array>
#include <chrono>
#include <span>
#include <sys/epoll.h>

namespace vant {

using Clock = std::chrono::steady_clock;

/// Any number of sockets and one alarm behind a single descriptor, which is readable when one of them has something to
/// tell. It never waits. Its descriptors are closed on exec.
class DownloadPoller {
public:
    DownloadPoller();
    DownloadPoller(const DownloadPoller &) = delete;
    DownloadPoller &operator=(const DownloadPoller &) = delete;
    ~DownloadPoller();

    [[nodiscard]] int descriptor() const noexcept { return poller_; }

    /// Looks out for what `events` names (EPOLLIN, EPOLLOUT) on a socket, instead of what it did before.
    void watch(int socket, std::uint32_t events) noexcept;
    void forget(int socket) noexcept;

    /// The sockets that have something to tell now. Valid until the next call.
    [[nodiscard]] std::span<const epoll_event> ready() noexcept;
    /// True when the last answer of `ready` may have left some out.
    [[nodiscard]] bool hasMore() const noexcept { return hasMore_; }

    /// Sets the alarm, unless it is going to go off earlier anyway.
    void alarmAt(Clock::time_point time) noexcept;
    /// Switches off an alarm that has gone off. Gives the time since it was due, zero when it was not.
    Clock::duration takeAlarm(Clock::time_point now) noexcept;

private:
    int poller_;
    int timer_;
    bool hasMore_ = false;
    Clock::time_point alarm_ = Clock::time_point::max();
    std::array<epoll_event, 256> events_{};
};

} // namespace vant
