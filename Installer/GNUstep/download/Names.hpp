#pragma once
#include <cstddef>
#include <string>
#include <string_view>

namespace vant {

/// "folder/name.ext" and 3 give "folder/name-3.ext"; a leading dot begins a name, not an extension.
[[nodiscard]] std::string numberedPath(std::string_view path, std::size_t number);

/// The file name a server proposes: that of its Content-Disposition, else the last component of the address, else the
/// host. Never empty, and never more than one path component.
[[nodiscard]] std::string suggestedName(std::string_view disposition, const std::string &address);

} // namespace vant
