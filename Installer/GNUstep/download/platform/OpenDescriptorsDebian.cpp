#include "GNUstep/download/platform/OpenDescriptors.hpp"

#include <sys/socket.h>

namespace vant {

const char *const descriptorFolder = "/proc/self/fd";

int makeSocket(int family, int type, int protocol) noexcept {
    return ::socket(family, type | SOCK_CLOEXEC, protocol);
}

} // namespace vant
