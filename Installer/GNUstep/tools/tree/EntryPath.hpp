#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vant::tools {

/// Where an archive entry goes, relative to the destination.
struct EntryPath {
    std::vector<std::string> folders; ///< from the destination down; never "." or ".."
    std::string name;                 ///< last component; empty for the destination itself ("." or "./")

    /// The whole path with "/" between its components.
    [[nodiscard]] std::string text() const;
};

/// The path of an entry as its archive gives it, or nothing when it would leave the destination: an absolute path, a
/// ".." anywhere, an embedded NUL, or more than 200 components.
[[nodiscard]] std::optional<EntryPath> safeEntryPath(std::string_view path);

/// Whether the entry belongs to the folder in which a Mac's zip keeps extended attributes ("__MACOSX" at the top).
[[nodiscard]] bool isMacMetadata(const EntryPath &path);

/// Whether the file's name and first bytes say that it holds another file's extended attributes ("._name").
[[nodiscard]] bool isAppleDouble(std::string_view name, std::string_view firstBytes);

} // namespace vant::tools
