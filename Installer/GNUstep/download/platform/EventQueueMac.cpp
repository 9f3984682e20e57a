#include "GNUstep/download/platform/EventQueue.hpp"

#include "GNUstep/process/Uninterrupted.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <fcntl.h>
#include <sys/event.h>

namespace vant {
namespace {

constexpr std::size_t mostAtATime = 256;
constexpr std::uintptr_t theTimer = 1;
/// For a timer that the system has told of, and so cleared, while nobody has learned of it yet.
constexpr std::chrono::nanoseconds atOnce{1};

void change(int queue, std::uintptr_t ident, std::int16_t filter, bool isWanted) noexcept {
    struct kevent event {};
    EV_SET(&event, ident, filter, isWanted ? EV_ADD : EV_DELETE, 0, 0, nullptr);
    // What was not watched for cannot be deleted, which is no harm.
    ::kevent(queue, &event, 1, nullptr, 0, nullptr);
}

SocketEvents eventsFrom(const struct kevent &event) noexcept {
    return {.socket = static_cast<int>(event.ident),
            .reading = event.filter == EVFILT_READ,
            .writing = event.filter == EVFILT_WRITE,
            .failed = (event.flags & EV_EOF) != 0 && event.fflags != 0};
}

} // namespace

EventQueue::EventQueue() : queue_(::kqueue()) {
    ::fcntl(queue_.get(), F_SETFD, FD_CLOEXEC);
}

// Not by `poll`, which does not take such a descriptor here. What is ready stays so, but for the timer.
void EventQueue::wait(std::chrono::milliseconds most) noexcept {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(most);
    const timespec limit{.tv_sec = seconds.count(), .tv_nsec = std::chrono::nanoseconds(most - seconds).count()};
    struct kevent event {};
    if (::kevent(queue_.get(), nullptr, 0, &event, 1, &limit) > 0 && event.filter == EVFILT_TIMER)
        setTimer(atOnce);
}

void EventQueue::watch(const SocketEvents &wanted) noexcept {
    const auto socket = static_cast<std::uintptr_t>(wanted.socket);
    change(queue_.get(), socket, EVFILT_READ, wanted.reading);
    change(queue_.get(), socket, EVFILT_WRITE, wanted.writing);
}

void EventQueue::forget(int socket) noexcept {
    watch({.socket = socket});
}

EventQueue::Look EventQueue::look(std::span<SocketEvents> ready) noexcept {
    std::array<struct kevent, mostAtATime> events{};
    const std::size_t room = std::min(ready.size(), events.size());
    constexpr timespec noTime{};
    const int found = uninterrupted(
        [&] { return ::kevent(queue_.get(), nullptr, 0, events.data(), static_cast<int>(room), &noTime); });
    const std::span seen(events.data(), static_cast<std::size_t>(std::max(found, 0)));
    std::size_t count = 0;
    for (const struct kevent &event : seen) {
        if (event.filter != EVFILT_TIMER)
            ready[count++] = eventsFrom(event);
        else
            setTimer(atOnce);
    }
    return {.count = count, .isFull = seen.size() == room};
}

void EventQueue::setTimer(std::chrono::nanoseconds wait) noexcept {
    struct kevent event {};
    EV_SET(&event, theTimer, EVFILT_TIMER, EV_ADD | EV_ONESHOT, NOTE_NSECONDS, wait.count(), nullptr);
    ::kevent(queue_.get(), &event, 1, nullptr, 0, nullptr);
}

void EventQueue::clearTimer() noexcept {
    change(queue_.get(), theTimer, EVFILT_TIMER, false);
}

} // namespace vant
