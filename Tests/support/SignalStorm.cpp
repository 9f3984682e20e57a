#include "SignalStorm.hpp"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <sys/syscall.h>
#include <unistd.h>

namespace vant::test {
namespace {

constexpr int storming = SIGUSR2;
std::atomic<int> count = 0;

} // namespace

SignalStorm::SignalStorm() {
    struct sigaction action = {};
    action.sa_handler = [](int) { ++count; };
    ::sigaction(storming, &action, &before_);
    thread_ = std::thread([this] { run(); });
}

SignalStorm::~SignalStorm() {
    stopping_ = true;
    thread_.join();
    // A signal that is still on its way must not meet the default, which ends the process.
    before_.sa_handler = before_.sa_handler == SIG_DFL ? SIG_IGN : before_.sa_handler;
    ::sigaction(storming, &before_, nullptr);
}

int SignalStorm::handled() noexcept {
    return count;
}

void SignalStorm::run() const {
    const auto self = static_cast<pid_t>(::syscall(SYS_gettid));
    std::error_code ended;
    while (!stopping_) {
        for (const auto &thread : std::filesystem::directory_iterator("/proc/self/task", ended)) {
            const auto id = static_cast<pid_t>(std::atoi(thread.path().filename().c_str()));
            if (id != self)
                ::syscall(SYS_tgkill, ::getpid(), id, storming);
        }
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
}

} // namespace vant::test
