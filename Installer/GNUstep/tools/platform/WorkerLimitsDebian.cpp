#include "GNUstep/tools/platform/WorkerLimits.hpp"

#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <fstream>

namespace vant::tools {

namespace {

/// Bytes of data that this process has already; an instrumented build has more than any limit.
rlim_t dataSize() {
    std::ifstream file("/proc/self/statm");
    std::array<rlim_t, 6> pages{};
    for (auto &number : pages)
        file >> number;
    return pages.back() * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE));
}

void limitMemory(rlim_t most) {
    rlimit limit{};
    ::getrlimit(RLIMIT_DATA, &limit);
    if (dataSize() >= most)
        return;
    limit.rlim_cur = std::min(most, limit.rlim_max);
    ::setrlimit(RLIMIT_DATA, &limit);
}

} // namespace

void holdTo(const WorkerLimits &limits) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != limits.parent)
        ::raise(SIGKILL);
    limitMemory(limits.memory);
}

void liftMemoryLimit() {
    rlimit limit{};
    ::getrlimit(RLIMIT_DATA, &limit);
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_DATA, &limit);
}

} // namespace vant::tools
