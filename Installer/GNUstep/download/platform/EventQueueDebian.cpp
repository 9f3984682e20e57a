#include "GNUstep/download/platform/EventQueue.hpp"

#include "GNUstep/process/Uninterrupted.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <poll.h>
#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace vant {
namespace {

constexpr std::size_t mostAtATime = 256;

SocketEvents eventsFrom(const epoll_event &event) noexcept {
    return {.socket = event.data.fd,
            .reading = (event.events & (EPOLLIN | EPOLLHUP)) != 0,
            .writing = (event.events & EPOLLOUT) != 0,
            .failed = (event.events & EPOLLERR) != 0};
}

} // namespace

EventQueue::EventQueue()
    : queue_(::epoll_create1(EPOLL_CLOEXEC)), timer_(::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)) {
    watch({.socket = timer_.get(), .reading = true});
}

void EventQueue::wait(std::chrono::milliseconds most) noexcept {
    pollfd queue{.fd = queue_.get(), .events = POLLIN, .revents = 0};
    ::poll(&queue, 1, static_cast<int>(most.count()));
}

void EventQueue::watch(const SocketEvents &wanted) noexcept {
    epoll_event event{};
    event.events = (wanted.reading ? EPOLLIN : 0U) | (wanted.writing ? EPOLLOUT : 0U);
    event.data.fd = wanted.socket;
    if (::epoll_ctl(queue_.get(), EPOLL_CTL_ADD, wanted.socket, &event) != 0)
        ::epoll_ctl(queue_.get(), EPOLL_CTL_MOD, wanted.socket, &event);
}

void EventQueue::forget(int socket) noexcept {
    ::epoll_ctl(queue_.get(), EPOLL_CTL_DEL, socket, nullptr);
}

EventQueue::Look EventQueue::look(std::span<SocketEvents> ready) noexcept {
    std::array<epoll_event, mostAtATime> events{};
    const std::size_t room = std::min(ready.size(), events.size());
    const int found =
        uninterrupted([&] { return ::epoll_wait(queue_.get(), events.data(), static_cast<int>(room), 0); });
    const std::span seen(events.data(), static_cast<std::size_t>(std::max(found, 0)));
    std::size_t count = 0;
    for (const epoll_event &event : seen)
        if (event.data.fd != timer_.get())
            ready[count++] = eventsFrom(event);
    return {.count = count, .isFull = seen.size() == room};
}

void EventQueue::setTimer(std::chrono::nanoseconds wait) noexcept {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(wait);
    itimerspec setting{};
    setting.it_value.tv_sec = seconds.count();
    setting.it_value.tv_nsec = (wait - seconds).count();
    ::timerfd_settime(timer_.get(), 0, &setting, nullptr);
}

void EventQueue::clearTimer() noexcept {
    std::uint64_t expirations = 0;
    // Nothing to read: the alarm is due, but the kernel has yet to notice. It is set anew by then.
    [[maybe_unused]] const auto count =
        uninterrupted([&] { return ::read(timer_.get(), &expirations, sizeof expirations); });
}

} // namespace vant
