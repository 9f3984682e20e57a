#pragma once
#include "GNUstep/download/platform/EventQueue.hpp"
#include "GNUstep/download/Slice.hpp"

#include <array>
#include <span>

namespace vant {

/// Any number of sockets and one alarm behind a single descriptor, which is readable when one of them is ready. It
/// waits in `wait` alone. Its descriptors are closed on exec.
class DownloadPoller {
public:
    DownloadPoller() = default;
    DownloadPoller(const DownloadPoller &) = delete;
    DownloadPoller &operator=(const DownloadPoller &) = delete;

    [[nodiscard]] int descriptor() const noexcept { return queue_.descriptor(); }

    /// Until one of them is ready, a signal comes, or this much time has passed.
    void wait(std::chrono::milliseconds most) noexcept { queue_.wait(most); }

    /// Watches a socket for these events, which replace those watched before.
    void watch(const SocketEvents &wanted) noexcept { queue_.watch(wanted); }
    /// Stops watching a socket.
    void forget(int socket) noexcept { queue_.forget(socket); }

    /// The sockets that are ready now. Valid until the next call.
    [[nodiscard]] std::span<const SocketEvents> ready() noexcept;
    /// True when the last result of `ready` may have left some out.
    [[nodiscard]] bool hasMore() const noexcept { return hasMore_; }

    /// Sets the alarm, unless it goes off earlier anyway.
    void alarmAt(Clock::time_point time) noexcept;
    /// Clears an alarm that is due. Gives the time since it was, zero when it isn't.
    Clock::duration takeAlarm(Clock::time_point now) noexcept;

private:
    EventQueue queue_;
    bool hasMore_ = false;
    Clock::time_point alarm_ = Clock::time_point::max();
    std::array<SocketEvents, 256> events_{};
};

} // namespace vant
