#pragma once
#include "read/Lists.hpp"

namespace vant::media {

/// Whether a file of at most that size can be read at the path: `None`, or what forbids it. Never opens anything but a
/// regular file.
[[nodiscard]] ListFault accessFault(const std::string &path, std::uintmax_t largest);

} // namespace vant::media
