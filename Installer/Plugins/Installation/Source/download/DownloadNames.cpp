#include "download/DownloadNames.hpp"

#include "base/Paths.hpp"

namespace vant {

std::string_view destinationName(std::string_view address) noexcept {
    return address.substr(address.rfind('/') + 1);
}

std::string_view extractFolderName(std::string_view archivePath) noexcept {
    return deletingPathExtension(lastPathComponent(archivePath));
}

ArchiveKind archiveKind(std::string_view archivePath) noexcept {
    return pathExtension(archivePath) == "zip" ? ArchiveKind::Zip : ArchiveKind::Cpio;
}

} // namespace vant
