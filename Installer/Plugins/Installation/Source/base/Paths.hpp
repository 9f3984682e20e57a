#pragma once
#include <string_view>

namespace vant {

/// The piece behind the last slash; slashes at the end do not count. "/" for a path of slashes alone, empty for an
/// empty path. A view into the path.
[[nodiscard]] std::string_view lastPathComponent(std::string_view path) noexcept;

/// What follows the last full stop of the last component: "pkg" of "/a/b.pkg/". Empty when there is none, when it ends
/// the name ("a."), and when it begins the name (".pkg" is a hidden file without an extension). A view into the path.
[[nodiscard]] std::string_view pathExtension(std::string_view path) noexcept;

/// The path without its extension, the full stop before it, and slashes at the end: "/a/b" of "/a/b.pkg/". A view into
/// the path.
[[nodiscard]] std::string_view deletingPathExtension(std::string_view path) noexcept;

/// File name that an address is downloaded to: what stands behind its last slash, query text included. Empty for an
/// address that ends in a slash; the whole address when it has none. A view into the address.
[[nodiscard]] std::string_view destinationName(std::string_view address) noexcept;

} // namespace vant
