#include "GNUstep/download/Address.hpp"

#include <algorithm>
#include <array>
#include <cctype>
#include <curl/curl.h>
#include <memory>
#include <utility>

namespace vant {
namespace {

using Address = std::unique_ptr<CURLU, decltype(&curl_url_cleanup)>;

Address parsed(const std::string &address) {
    Address url(curl_url(), curl_url_cleanup);
    if (curl_url_set(url.get(), CURLUPART_URL, address.c_str(), CURLU_NON_SUPPORT_SCHEME | CURLU_PATH_AS_IS) !=
        CURLUE_OK)
        url.reset();
    return url;
}

std::string part(const Address &url, CURLUPart which, unsigned flags = 0) {
    char *text = nullptr;
    if (!url || curl_url_get(url.get(), which, &text, flags) != CURLUE_OK)
        return {};
    const std::unique_ptr<char, decltype(&curl_free)> owner(text, curl_free);
    return text;
}

/// How well a scheme protects what it carries; 0 for one that no server may redirect to.
int protection(std::string_view scheme) noexcept {
    constexpr std::array<std::pair<std::string_view, int>, 3> levels = {{{"https", 3}, {"http", 2}, {"ftp", 1}}};
    const auto *const found = std::ranges::find(levels, scheme, &std::pair<std::string_view, int>::first);
    return found == levels.end() ? 0 : found->second;
}

} // namespace

std::string addressScheme(std::string_view address) {
    const auto colon = address.find(':');
    if (colon == std::string_view::npos || colon == 0)
        return {};
    std::string scheme(address.substr(0, colon));
    const bool legal = std::ranges::all_of(
        scheme, [](unsigned char c) { return std::isalnum(c) != 0 || c == '+' || c == '-' || c == '.'; });
    std::ranges::transform(scheme, scheme.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return legal ? scheme : std::string{};
}

std::string addressHost(const std::string &address) {
    std::string host = part(parsed(address), CURLUPART_HOST);
    if (host.starts_with('[') && host.ends_with(']'))
        return host.substr(1, host.size() - 2);
    return host;
}

std::string addressPath(const std::string &address) {
    return part(parsed(address), CURLUPART_PATH, CURLU_URLDECODE);
}

bool isLoopback(std::string_view host) noexcept {
    return host == "localhost" || host == "::1" || host.starts_with("127.");
}

std::optional<std::string> localPath(const std::string &address) {
    const auto host = addressHost(address);
    std::string path = addressPath(address);
    if (path.empty() || !(host.empty() || isLoopback(host)))
        return std::nullopt;
    return path;
}

DownloadError errorForAddress(const std::string &address) {
    if (address.empty())
        return DownloadError::badAddress;
    const auto scheme = addressScheme(address);
    if (scheme == "file")
        return localPath(address) ? DownloadError::none : DownloadError::badAddress;
    if (protection(scheme) == 0)
        return DownloadError::unsupportedAddress;
    return addressHost(address).empty() ? DownloadError::badAddress : DownloadError::none;
}

DownloadError errorForRedirect(const std::string &from, const std::string &to) {
    if (to.empty())
        return DownloadError::badAddress;
    const int offered = protection(addressScheme(to));
    const bool keepsProtection = offered > 0 && offered >= protection(addressScheme(from));
    return keepsProtection ? DownloadError::none : DownloadError::unsupportedAddress;
}

std::optional<std::string> redirectTarget(const std::string &address, const std::string &location) {
    const Address url = parsed(address);
    // Servers send blanks and accents unescaped; the library escapes them only when told to.
    constexpr unsigned flags = CURLU_NON_SUPPORT_SCHEME | CURLU_URLENCODE | CURLU_PATH_AS_IS;
    if (!url || location.empty() || curl_url_set(url.get(), CURLUPART_URL, location.c_str(), flags) != CURLUE_OK)
        return std::nullopt;
    return part(url, CURLUPART_URL);
}

} // namespace vant
