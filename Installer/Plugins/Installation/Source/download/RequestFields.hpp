#pragma once
#include <string_view>

namespace vant {

/// What every download's request says of itself. Servers that sniff for browsers must take the installer for one,
/// always for the same.
inline constexpr std::string_view requestUserAgent =
    "Mozilla/5.0 (Macintosh; Intel Mac OS X 10_6_8) AppleWebKit/534.57.2 "
    "(KHTML, like Gecko) Version/5.1.7 Safari/534.57.2";
inline constexpr std::string_view requestAccept = "text/html,application/xhtml+xml,application/xml;q=0.9,*/*;q=0.8";

/// Seconds in which a server has to send something.
inline constexpr double requestTimeOut = 60.0;

} // namespace vant
