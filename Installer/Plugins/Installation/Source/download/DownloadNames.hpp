#pragma once
#include <string_view>

namespace vant {

/// File name that an address is downloaded to: what stands behind its last slash, query text included. Empty for an
/// address that ends in a slash; the whole address when it has none. A view into the address.
[[nodiscard]] std::string_view destinationName(std::string_view address) noexcept;

/// Name of the folder that an archive expands into: its file name without the extension. A view into the path.
[[nodiscard]] std::string_view extractFolderName(std::string_view archivePath) noexcept;

enum class ArchiveKind { Zip, Cpio };

/// Kind of an archive, by its extension alone: exactly "zip", or else cpio.
[[nodiscard]] ArchiveKind archiveKind(std::string_view archivePath) noexcept;

} // namespace vant
