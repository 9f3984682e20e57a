#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace vant::test {

/// One file of an archive. The name may be anything, paths that lead out of the archive included.
struct ArchiveEntry {
    std::string name;
    std::string content;
};

/// A zip archive that stores its files as they are.
[[nodiscard]] std::string zipOf(const std::vector<ArchiveEntry> &entries);

/// A cpio archive in the portable character form, not compressed.
[[nodiscard]] std::string cpioOf(const std::vector<ArchiveEntry> &entries);

/// The text in gzip form, stored as it is. Fewer than 65,536 bytes.
[[nodiscard]] std::string gzipStored(std::string_view text);

} // namespace vant::test
