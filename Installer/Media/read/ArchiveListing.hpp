#pragma once
#include "read/Apart.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace vant::media {

/// The items of a zip or cpio archive in its order, folders included that only show in the paths of others. What the
/// tool leaves out as a Mac's metadata is left out. The fault is empty for an archive that was read to its end.
struct ArchiveState {
    std::vector<std::string> items;
    std::string fault;
    std::string outside;     ///< the first entry that leads out of the folder; empty when none does
    std::uint64_t bytes = 0; ///< of all files together, as the archive says
    bool isTooLarge = false; ///< they are more than 1 GiB and more than a hundred times the archive's own
};
[[nodiscard]] ArchiveState readArchive(const std::string &path, bool isZip);

/// The same within this process, which a hostile archive may hold up or bring down. Any thread.
[[nodiscard]] ArchiveState readArchiveHere(const std::string &path, bool isZip, const Alive &alive);

} // namespace vant::media
