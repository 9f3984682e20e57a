#include "ProcessorTime.hpp"

#include <ctime>

namespace vant::test {
namespace {

double seconds(clockid_t clock) {
    timespec time{};
    ::clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

} // namespace

double threadSeconds() {
    return seconds(CLOCK_THREAD_CPUTIME_ID);
}

double processSeconds() {
    return seconds(CLOCK_PROCESS_CPUTIME_ID);
}

} // namespace vant::test
