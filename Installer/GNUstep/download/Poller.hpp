#pragma once
#include "GNUstep/download/Slice.hpp"

#include <array>
#include <cstdint>
#include <span>
#include <sys/epoll.h>

namespace vant {

/// Any number of sockets and one alarm behind a single descriptor, which is readable when one of them is ready. It
/// never waits. Its descriptors are closed on exec.
class DownloadPoller {
public:
    DownloadPoller();
    DownloadPoller(const DownloadPoller &) = delete;
    DownloadPoller &operator=(const DownloadPoller &) = delete;
    ~DownloadPoller();

    [[nodiscard]] int descriptor() const noexcept { return poller_; }

    /// Watches a socket for `events` (EPOLLIN, EPOLLOUT), which replace those watched before.
    void watch(int socket, std::uint32_t events) noexcept;
    /// Stops watching a socket.
    void forget(int socket) noexcept;

    /// The sockets that are ready now. Valid until the next call.
    [[nodiscard]] std::span<const epoll_event> ready() noexcept;
    /// True when the last result of `ready` may have left some out.
    [[nodiscard]] bool hasMore() const noexcept { return hasMore_; }

    /// Sets the alarm, unless it goes off earlier anyway.
    void alarmAt(Clock::time_point time) noexcept;
    /// Clears an alarm that is due. Gives the time since it was, zero when it isn't.
    Clock::duration takeAlarm(Clock::time_point now) noexcept;

private:
    int poller_;
    int timer_;
    bool hasMore_ = false;
    Clock::time_point alarm_ = Clock::time_point::max();
    std::array<epoll_event, 256> events_{};
};

} // namespace vant
