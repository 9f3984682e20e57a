#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vant {

/// The scheme of an address in lower case; empty when it has none.
[[nodiscard]] std::string addressScheme(std::string_view address);

/// The host of an address, without user, port and brackets; empty when it has none.
[[nodiscard]] std::string addressHost(const std::string &address);

/// True for this machine's own names and addresses: no proxy stands in between.
[[nodiscard]] bool isLoopback(std::string_view host) noexcept;

/// The path of a "file" address with its escapes resolved; nothing for an address of another machine.
[[nodiscard]] std::optional<std::string> localPath(const std::string &address);

/// A redirect's target: `location`, read relative to the address that answered. Nothing when it makes no address.
[[nodiscard]] std::optional<std::string> redirectTarget(const std::string &address, const std::string &location);

/// "folder/name.ext" and 3 give "folder/name-3.ext"; a leading dot begins a name, not an extension.
[[nodiscard]] std::string numberedPath(std::string_view path, std::size_t number);

/// The file name a server proposes: that of its Content-Disposition, else the last piece of the address, else the host.
/// Never empty, and never more than one path component.
[[nodiscard]] std::string suggestedName(std::string_view disposition, const std::string &address);

} // namespace vant
