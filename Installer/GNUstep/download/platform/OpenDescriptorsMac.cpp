#include "GNUstep/download/platform/OpenDescriptors.hpp"

#include <fcntl.h>
#include <sys/socket.h>

namespace vant {

const char *const descriptorFolder = "/dev/fd";

// The system has no call for both, so a program that another thread starts in between inherits the socket.
int makeSocket(int family, int type, int protocol) noexcept {
    const int made = ::socket(family, type, protocol);
    if (made >= 0)
        ::fcntl(made, F_SETFD, FD_CLOEXEC);
    return made;
}

} // namespace vant
