#pragma once
#include <string>
#include <string_view>

namespace vant {

enum class ArchiveKind { Zip, Cpio };

/// The shell command that expands an archive into a folder. Both paths stand between double quotes and nothing in them
/// is escaped: what the shell reads inside double quotes, it reads in a path.
[[nodiscard]] std::string dittoCommand(ArchiveKind kind, std::string_view archivePath, std::string_view destination);

} // namespace vant
