#pragma once
#include <string>
#include <string_view>

namespace vant {

/// The two kinds of archive that components come in.
enum class ArchiveKind { Zip, Cpio };

/// Kind of an archive, by its extension alone: exactly "zip", or else cpio.
[[nodiscard]] ArchiveKind archiveKind(std::string_view archivePath) noexcept;

/// Name of the folder that an archive is expanded into: its file name without the extension. A view into the path.
[[nodiscard]] std::string_view extractFolderName(std::string_view archivePath) noexcept;

/// The shell command that expands an archive into a folder. Both paths stand between double quotes and nothing in them
/// is escaped: what the shell reads inside double quotes, it reads in a path.
[[nodiscard]] std::string dittoCommand(ArchiveKind kind, std::string_view archivePath, std::string_view destination);

} // namespace vant
