#pragma once
#include "install/tasks/Archives.hpp"

#include <string>
#include <string_view>

namespace vant::media {

/// What a file is by its first bytes.
enum class ContentKind { Empty, Zip, Cpio, Compressed, FlatPackage, WebPage, Unknown };

/// By the first 512 bytes of a file, or by as many as there are.
[[nodiscard]] ContentKind contentKind(std::string_view start) noexcept;
/// The same for a file; Empty when it cannot be read.
[[nodiscard]] ContentKind contentKindOfFile(const std::string &path);

/// "a zip", "a web page" …, for a sentence.
[[nodiscard]] std::string_view contentName(ContentKind kind) noexcept;

/// Whether the tool that the pane expands such an archive with may read this content.
[[nodiscard]] bool suits(ContentKind content, ArchiveKind archive) noexcept;

} // namespace vant::media
