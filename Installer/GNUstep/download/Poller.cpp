#include "GNUstep/download/Poller.hpp"

#include <algorithm>

namespace vant {

std::span<const SocketEvents> DownloadPoller::ready() noexcept {
    const auto [count, isFull] = queue_.look(events_);
    hasMore_ = isFull;
    return std::span(events_).first(count);
}

void DownloadPoller::alarmAt(Clock::time_point time) noexcept {
    // An alarm that goes off early costs one pass; setting it anew for every piece of data would cost a call each.
    if (time >= alarm_)
        return;
    alarm_ = time;
    queue_.setTimer(std::max<Clock::duration>(time - Clock::now(), std::chrono::nanoseconds(1)));
}

Clock::duration DownloadPoller::takeAlarm(Clock::time_point now) noexcept {
    if (now < alarm_)
        return Clock::duration::zero();
    queue_.clearTimer();
    const auto late = now - alarm_;
    alarm_ = Clock::time_point::max();
    return late;
}

} // namespace vant
