#include "GNUstep/download/Poller.hpp"

#include "GNUstep/process/Uninterrupted.hpp"

#include <algorithm>
#include <cstdint>
#include <sys/timerfd.h>
#include <unistd.h>

namespace vant {

DownloadPoller::DownloadPoller()
    : poller_(::epoll_create1(EPOLL_CLOEXEC)), timer_(::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)) {
    watch(timer_, EPOLLIN);
}

DownloadPoller::~DownloadPoller() {
    ::close(timer_);
    ::close(poller_);
}

void DownloadPoller::watch(int socket, std::uint32_t events) noexcept {
    epoll_event event{};
    event.events = events;
    event.data.fd = socket;
    if (::epoll_ctl(poller_, EPOLL_CTL_ADD, socket, &event) != 0)
        ::epoll_ctl(poller_, EPOLL_CTL_MOD, socket, &event);
}

void DownloadPoller::forget(int socket) noexcept {
    ::epoll_ctl(poller_, EPOLL_CTL_DEL, socket, nullptr);
}

std::span<const epoll_event> DownloadPoller::ready() noexcept {
    const int found =
        uninterrupted([&] { return ::epoll_wait(poller_, events_.data(), static_cast<int>(events_.size()), 0); });
    const auto count = static_cast<std::size_t>(std::max(found, 0));
    hasMore_ = count == events_.size();
    const auto end = std::remove_if(events_.begin(), events_.begin() + static_cast<std::ptrdiff_t>(count),
                                    [this](const epoll_event &event) { return event.data.fd == timer_; });
    return {events_.begin(), end};
}

void DownloadPoller::alarmAt(Clock::time_point time) noexcept {
    // An alarm that goes off early costs one pass; setting it anew for every piece of data would cost a call each.
    if (time >= alarm_)
        return;
    alarm_ = time;
    const auto wait = std::max<Clock::duration>(time - Clock::now(), std::chrono::nanoseconds(1));
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(wait);
    itimerspec setting{};
    setting.it_value.tv_sec = seconds.count();
    setting.it_value.tv_nsec = std::chrono::nanoseconds(wait - seconds).count();
    ::timerfd_settime(timer_, 0, &setting, nullptr);
}

Clock::duration DownloadPoller::takeAlarm(Clock::time_point now) noexcept {
    if (now < alarm_)
        return Clock::duration::zero();
    std::uint64_t expirations = 0;
    // Nothing to read: the alarm is due, but the kernel has yet to notice. It is set anew by then.
    [[maybe_unused]] const auto count = uninterrupted([&] { return ::read(timer_, &expirations, sizeof expirations); });
    const auto late = now - alarm_;
    alarm_ = Clock::time_point::max();
    return late;
}

} // namespace vant
