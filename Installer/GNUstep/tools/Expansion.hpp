#pragma once
#include "ArchiveReader.hpp"
#include "Destination.hpp"

#include <cstdint>
#include <functional>

namespace vant {

/// What one expansion may produce at most. Generous for real software, small beside what a hostile archive of a few
/// kilobytes can unfold to.
struct Limits {
    std::uint64_t entries = 500'000;
    std::uint64_t bytes = std::uint64_t{16} << 30;
};

/// What an expansion produced.
struct Expanded {
    std::uint64_t entries = 0; ///< entries read, those left out as metadata included
    std::uint64_t bytes = 0;   ///< bytes of file data written
};

/// Writes every entry of the archive into the destination and gives the folders their final modes. Calls `moved` after
/// each entry and each block of data. Throws ExpansionError at the first entry that is damaged, leads out of the
/// destination, is neither file, folder nor link, or passes a limit; what was written before it stays.
Expanded expand(ArchiveReader &reader, Destination &destination, const Limits &limits,
                const std::function<void()> &moved);

} // namespace vant
