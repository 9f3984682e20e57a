#pragma once
#include "GNUstep/files/Descriptor.hpp"

#include <chrono>
#include <cstddef>
#include <span>

namespace vant {

/// A socket and what it is watched for, or ready for.
struct SocketEvents {
    int socket = -1;
    bool reading = false; ///< data, or the end of the connection
    bool writing = false;
    bool failed = false; ///< never watched for, always told
};

/// The system's queue of events: sockets and one timer behind a descriptor that is readable while one of them is due.
/// None of its calls but `wait` waits.
class EventQueue {
public:
    EventQueue();

    /// Readable while a socket is ready or the timer has run out; closed on exec.
    [[nodiscard]] int descriptor() const noexcept { return queue_.get(); }

    /// Until one of them is due, a signal comes, or this much time has passed.
    void wait(std::chrono::milliseconds most) noexcept;

    /// Watches a socket for these events alone.
    void watch(const SocketEvents &wanted) noexcept;
    void forget(int socket) noexcept;

    /// What came of one look.
    struct Look {
        std::size_t count; ///< of the events that were filled in
        bool isFull;       ///< there may be more than there was room for
    };
    /// Fills in what is ready now; a socket may stand there twice. The timer stays due.
    [[nodiscard]] Look look(std::span<SocketEvents> ready) noexcept;

    /// Sets the timer anew; `wait` is more than zero.
    void setTimer(std::chrono::nanoseconds wait) noexcept;
    /// Makes a timer that has run out no longer due.
    void clearTimer() noexcept;

private:
    Descriptor queue_;
    Descriptor timer_; ///< none where the queue has timers of its own
};

} // namespace vant
