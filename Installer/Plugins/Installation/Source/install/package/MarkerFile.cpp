#include "install/package/MarkerFile.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vant {

namespace {

constexpr mode_t usualMode = 0666; // less what the process's mask takes away

} // namespace

void createMarkerFile() noexcept {
    // A link that someone has put there must not lead to a file of the user's: it goes, and the new file is made only
    // where nothing is.
    ::unlink(markerFile);
    const int descriptor = ::open(markerFile, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, usualMode);
    if (descriptor >= 0)
        ::close(descriptor);
}

void removeMarkerFile() noexcept {
    struct stat found {};
    if (::lstat(markerFile, &found) == 0 && S_ISREG(found.st_mode))
        ::unlink(markerFile);
}

} // namespace vant
