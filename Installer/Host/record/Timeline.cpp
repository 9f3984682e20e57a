#include "Timeline.hpp"

#include <array>
#include <atomic>
#include <cstdio>

namespace vant::host {

Timeline::Timeline(const std::string &path) : start_(std::chrono::steady_clock::now()) {
    if (!path.empty())
        file_.open(path, std::ios::trunc);
}

double Timeline::seconds() const {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
}

void Timeline::record(std::string_view kind, std::string_view text) {
    const std::string thread = threadName();
    // The time is taken under the lock, so that the lines' times never fall.
    const std::lock_guard lock(mutex_);
    file_ << timelineLine(seconds(), thread, kind, text) << std::flush;
}

std::string threadName() {
    // Threads of a run come and go, and the system gives their handles out again: a number of our own tells them apart.
    static std::atomic<int> threads = 0;
    thread_local const int number = ++threads;
    return number == 1 ? "main" : "thread-" + std::to_string(number);
}

std::string timelineLine(double seconds, std::string_view thread, std::string_view kind, std::string_view text) {
    std::array<char, 24> time{};
    std::snprintf(time.data(), time.size(), "%9.3f", seconds);
    std::string line = std::string(time.data()) + "  ";
    line.append(thread).append(thread.size() < 10 ? 10 - thread.size() : 1, ' ');
    line.append(kind).append(kind.size() < 13 ? 13 - kind.size() : 1, ' ');
    for (const char c : text) {
        if (c == '\n')
            line += "\\n";
        else
            line += c;
    }
    return line + '\n';
}

} // namespace vant::host
