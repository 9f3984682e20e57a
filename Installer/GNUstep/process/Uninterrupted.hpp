#pragma once
#include <cerrno>

namespace vant {

/// The result of a system call that reports failure by -1 and `errno`, made again for as long as a signal interrupts
/// it: a host may have handlers without SA_RESTART.
template<class Call>
[[nodiscard]] auto uninterrupted(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

} // namespace vant
