#include "Watchdog.hpp"

#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#include <cstring>

namespace vant {

namespace {

const char *words = "";
const char *line = "";

void end(int /*signal*/) {
    // Nothing can be done about a failing write in the last moment.
    [[maybe_unused]] auto written = ::write(STDERR_FILENO, words, std::strlen(words));
    written = ::write(STDOUT_FILENO, line, std::strlen(line));
    ::_exit(1);
}

void setTimer(int seconds) {
    const itimerval time{.it_interval = {}, .it_value = {.tv_sec = seconds, .tv_usec = 0}};
    ::setitimer(ITIMER_PROF, &time, nullptr);
}

} // namespace

Watchdog::Watchdog(int seconds, const char *lastWords, const char *lastLine) : seconds_(seconds) {
    words = lastWords;
    line = lastLine;
    struct sigaction action {};
    action.sa_handler = end;
    ::sigaction(SIGPROF, &action, nullptr);
    setTimer(seconds);
}

Watchdog::~Watchdog() {
    setTimer(0);
}

void Watchdog::fed() const {
    setTimer(seconds_);
}

} // namespace vant
