#include "LogFiles.hpp"

#include <ctime>
#include <fcntl.h>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace vant::host {

static std::int64_t inNanoseconds(const timespec &time) noexcept {
    return time.tv_sec * std::int64_t{1'000'000'000} + time.tv_nsec;
}

std::int64_t changeTime(const struct stat &status) noexcept {
    return inNanoseconds(status.st_ctim);
}

// Some systems stamp with a coarse clock, some exactly where somebody has looked before, so a file is looked at and
// changed.
std::int64_t fileTime() noexcept {
    struct stat status {};
    const int file = memfd_create("mark", MFD_CLOEXEC);
    if (file < 0)
        return 0;
    fstat(file, &status);
    fchmod(file, S_IRUSR);
    fstat(file, &status);
    close(file);
    return changeTime(status);
}

std::int64_t coarseTime() noexcept {
    timespec now{};
    clock_gettime(CLOCK_REALTIME_COARSE, &now);
    return inNanoseconds(now);
}

int openAgain(int file) noexcept {
    return open(("/proc/self/fd/" + std::to_string(file)).c_str(), O_RDONLY | O_CLOEXEC);
}

} // namespace vant::host
