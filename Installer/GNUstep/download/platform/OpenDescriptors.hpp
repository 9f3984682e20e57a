#pragma once

namespace vant {

/// A new socket that no program inherits which this process starts; -1 and `errno` as the system's call.
[[nodiscard]] int makeSocket(int family, int type, int protocol) noexcept;

/// The folder that lists this process's open descriptors by their numbers.
extern const char *const descriptorFolder;

} // namespace vant
