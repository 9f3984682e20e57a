#include "install/tasks/Archives.hpp"

#include "base/Paths.hpp"

namespace vant {

ArchiveKind archiveKind(std::string_view archivePath) noexcept {
    return pathExtension(archivePath) == "zip" ? ArchiveKind::Zip : ArchiveKind::Cpio;
}

std::string_view extractFolderName(std::string_view archivePath) noexcept {
    return deletingPathExtension(lastPathComponent(archivePath));
}

std::string dittoCommand(ArchiveKind kind, std::string_view archivePath, std::string_view destination) {
    std::string command = kind == ArchiveKind::Zip ? "ditto -xk " : "ditto -x ";
    // Escaping here may look overdue, but hosts hand over paths that they have prepared for the shell already.
    command.append("\"").append(archivePath).append("\" \"").append(destination).append("\"");
    return command;
}

} // namespace vant
