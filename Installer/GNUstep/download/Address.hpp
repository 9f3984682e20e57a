#pragma once
#include "GNUstep/download/Errors.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace vant {

/// The scheme of an address in lower case; empty when it has none.
[[nodiscard]] std::string addressScheme(std::string_view address);

/// The host of an address, without user, port and brackets; empty when it has none.
[[nodiscard]] std::string addressHost(const std::string &address);

/// The path of an address with its escapes resolved; empty when the text is no address.
[[nodiscard]] std::string addressPath(const std::string &address);

/// True for this machine's own names and addresses, which are reached without a proxy.
[[nodiscard]] bool isLoopback(std::string_view host) noexcept;

/// The path of a "file" address with its escapes resolved; nothing for an address of another machine.
[[nodiscard]] std::optional<std::string> localPath(const std::string &address);

/// Why an address can't be fetched, `none` when it can.
[[nodiscard]] DownloadError errorForAddress(const std::string &address);

/// Why a redirect isn't followed, `none` when it is: it never leads from https to http, from http to ftp, or to a file
/// of this machine.
[[nodiscard]] DownloadError errorForRedirect(const std::string &from, const std::string &to);

/// A redirect's target: `location` relative to the address that answered. Nothing when it makes no address.
[[nodiscard]] std::optional<std::string> redirectTarget(const std::string &address, const std::string &location);

} // namespace vant
