#pragma once
#include <string>
#include <vector>

namespace vant::media {

/// What is wrong with a package; `None` when the whole of it can be read.
enum class PackageFault { None, Missing, NotReadable, SpecialFile, Empty, NoPackage, Damaged };

struct PackageState {
    PackageFault fault = PackageFault::None;
    std::string reason; ///< the tool's own words, or the item at fault
};

/// Reads a package through as the package tool does, every checksum included, without writing anything. Never hangs:
/// what does not come to an end counts as damaged. Main thread.
[[nodiscard]] PackageState readPackage(const std::string &path);

/// The items of a zip or cpio archive in its order, folders included that only show in the paths of others. What the
/// tool leaves out as a Mac's metadata is left out. The fault is empty for an archive that was read to its end.
struct ArchiveState {
    std::vector<std::string> items;
    std::string fault;
};
[[nodiscard]] ArchiveState readArchive(const std::string &path, bool isZip);

} // namespace vant::media
