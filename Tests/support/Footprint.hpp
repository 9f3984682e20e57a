#pragma once
#include <cstddef>
#include <iosfwd>

namespace vant::test {

/// What this process holds at one moment.
struct Footprint {
    std::size_t memory = 0; ///< KiB, resident and its own: neither code nor mapped files
    std::size_t descriptors = 0;
    std::size_t threads = 0;
    std::size_t children = 0; ///< running ones and those that nobody has reaped
};

[[nodiscard]] Footprint footprint();

std::ostream &operator<<(std::ostream &out, const Footprint &footprint);

} // namespace vant::test
