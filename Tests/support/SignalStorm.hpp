#pragma once
#include <atomic>
#include <csignal>
#include <thread>

namespace vant::test {

/// Interrupts every thread of the process over and over, as long as it exists: a handler without SA_RESTART, as a host
/// may have one, so that any system call that waits or reads may end with EINTR.
class SignalStorm {
public:
    SignalStorm();
    SignalStorm(const SignalStorm &) = delete;
    SignalStorm &operator=(const SignalStorm &) = delete;
    ~SignalStorm();

    /// Signals handled so far, on all threads.
    [[nodiscard]] static int handled() noexcept;

private:
    void run() const;

    struct sigaction before_ = {};
    std::atomic<bool> stopping_ = false;
    std::thread thread_;
};

} // namespace vant::test
