#include "GNUstep/tools/process/Watchdog.hpp"

#include <sys/time.h>
#include <unistd.h>

#include <csignal>

namespace vant::tools {

namespace {

volatile std::sig_atomic_t lastStatus = 1;

void end(int /*signal*/) {
    ::_exit(lastStatus);
}

void setTimer(int seconds) {
    const itimerval time{.it_interval = {}, .it_value = {.tv_sec = seconds, .tv_usec = 0}};
    ::setitimer(ITIMER_PROF, &time, nullptr);
}

} // namespace

Watchdog::Watchdog(int seconds, int status) : seconds_(seconds) {
    lastStatus = status;
    struct sigaction action {};
    action.sa_handler = end;
    ::sigaction(SIGPROF, &action, nullptr);
    setTimer(seconds);
}

Watchdog::~Watchdog() {
    setTimer(0);
}

void Watchdog::progressed() const {
    setTimer(seconds_);
}

} // namespace vant::tools
