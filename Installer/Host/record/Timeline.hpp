#pragma once
#include <chrono>
#include <fstream>
#include <mutex>
#include <string>
#include <string_view>

namespace vant::host {

/// What happened in a run, one line an event: seconds since the start, thread, kind, text. Every line is written
/// through at once, so that others can follow the file while the run goes on. Any thread.
class Timeline {
public:
    /// Writes to the file, replacing it; an empty path records nothing.
    explicit Timeline(const std::string &path);

    void record(std::string_view kind, std::string_view text);

    /// Seconds since the timeline was made.
    [[nodiscard]] double seconds() const;

private:
    std::chrono::steady_clock::time_point start_;
    std::mutex mutex_;
    std::ofstream file_;
};

/// "main" on the thread that asked first, else "thread-2", "thread-3" …, a number for every thread in the order of
/// asking.
[[nodiscard]] std::string threadName();

/// One line of a timeline; line feeds in the text stand as "\n".
[[nodiscard]] std::string timelineLine(double seconds, std::string_view thread, std::string_view kind,
                                       std::string_view text);

} // namespace vant::host
