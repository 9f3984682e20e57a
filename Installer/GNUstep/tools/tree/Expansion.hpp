#pragma once
#include "GNUstep/tools/archive/EntryReader.hpp"
#include "GNUstep/tools/tree/Destination.hpp"

#include <cstdint>
#include <functional>
#include <limits>

namespace vant::tools {

/// What one expansion may produce at most, beside what the volume has room for.
struct Limits {
    std::uint64_t entries = 500'000;
    /// Entries that say they have other names, as folders of a cpio do too. The library looks for each of them among
    /// all earlier ones: a hundred thousand would take half a minute.
    std::uint64_t linked = 40'000;
    std::uint64_t bytes = std::numeric_limits<std::uint64_t>::max();
};

/// What an expansion produced.
struct Expanded {
    std::uint64_t entries = 0; ///< entries read, those left out as metadata included
    std::uint64_t bytes = 0;   ///< bytes of file data written
};

/// Writes every entry of the archive into the destination and gives the folders their final modes. Calls `moved` after
/// each entry and each block of data that was written. Throws ExpansionError at the first entry that is damaged, leads
/// out of the destination, has a path too long to be opened, is neither file, folder nor link, or passes a limit; a
/// file for which the volume has no room is refused before its first byte. What was written before stays.
Expanded expand(EntryReader &reader, Destination &destination, const Limits &limits,
                const std::function<void()> &moved);

} // namespace vant::tools
