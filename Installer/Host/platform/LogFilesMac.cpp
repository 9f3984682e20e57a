#include "LogFiles.hpp"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <sys/param.h>
#include <unistd.h>

namespace vant::host {

std::int64_t changeTime(const struct stat &status) noexcept {
    return status.st_ctimespec.tv_sec * std::int64_t{1'000'000'000} + status.st_ctimespec.tv_nsec;
}

std::int64_t fileTime() noexcept {
    std::array<char, 32> name = {"/tmp/VantHost-mark-XXXXXX"};
    struct stat status {};
    const int file = mkstemp(name.data());
    if (file < 0)
        return 0;
    unlink(name.data());
    fstat(file, &status);
    close(file);
    return changeTime(status);
}

std::int64_t coarseTime() noexcept {
    return fileTime();
}

int openAgain(int file) noexcept {
    std::array<char, MAXPATHLEN> path{};
    return fcntl(file, F_GETPATH, path.data()) == 0 ? open(path.data(), O_RDONLY | O_CLOEXEC) : -1;
}

} // namespace vant::host
