#include "GNUstep/download/Names.hpp"

#include <algorithm>
#include <cctype>
#include <curl/curl.h>
#include <memory>

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

std::string lowered(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return result;
}

std::string_view lastComponent(std::string_view path) {
    const auto slash = path.find_last_of("/\\");
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

bool isFileName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." && name.find('\0') == std::string_view::npos;
}

/// The value of `filename` in a Content-Disposition, quoted or bare.
std::string_view dispositionName(std::string_view disposition) {
    constexpr std::string_view key = "filename=";
    const auto at = lowered(disposition).find(key);
    if (at == std::string::npos)
        return {};
    auto value = disposition.substr(at + key.size());
    if (value.starts_with('"'))
        return value.substr(1, value.find('"', 1) == std::string_view::npos ? value.size() : value.find('"', 1) - 1);
    value = value.substr(0, value.find(';'));
    const auto end = value.find_last_not_of(" \t");
    return end == std::string_view::npos ? std::string_view{} : value.substr(0, end + 1);
}

} // namespace

std::string addressScheme(std::string_view address) {
    const auto colon = address.find(':');
    if (colon == std::string_view::npos || colon == 0)
        return {};
    const auto scheme = address.substr(0, colon);
    const bool legal = std::ranges::all_of(
        scheme, [](unsigned char c) { return std::isalnum(c) != 0 || c == '+' || c == '-' || c == '.'; });
    return legal ? lowered(scheme) : std::string{};
}

std::string addressHost(const std::string &address) {
    std::string host = part(parsed(address), CURLUPART_HOST);
    if (host.starts_with('[') && host.ends_with(']'))
        return host.substr(1, host.size() - 2);
    return host;
}

bool isLoopback(std::string_view host) noexcept {
    return host == "localhost" || host == "::1" || host.starts_with("127.");
}

std::optional<std::string> localPath(const std::string &address) {
    const auto host = addressHost(address);
    std::string path = part(parsed(address), CURLUPART_PATH, CURLU_URLDECODE);
    if (path.empty() || !(host.empty() || isLoopback(host)))
        return std::nullopt;
    return path;
}

std::optional<std::string> redirectTarget(const std::string &address, const std::string &location) {
    const Address url = parsed(address);
    // Servers send blanks and accents as they are; the library escapes them where it is told to.
    constexpr unsigned flags = CURLU_NON_SUPPORT_SCHEME | CURLU_URLENCODE | CURLU_PATH_AS_IS;
    if (!url || location.empty() || curl_url_set(url.get(), CURLUPART_URL, location.c_str(), flags) != CURLUE_OK)
        return std::nullopt;
    return part(url, CURLUPART_URL);
}

std::string numberedPath(std::string_view path, std::size_t number) {
    const auto slash = path.rfind('/');
    const auto nameStart = slash == std::string_view::npos ? 0 : slash + 1;
    auto dot = path.rfind('.');
    if (dot == std::string_view::npos || dot <= nameStart)
        dot = path.size();
    std::string result(path.substr(0, dot));
    return result.append("-").append(std::to_string(number)).append(path.substr(dot));
}

std::string suggestedName(std::string_view disposition, const std::string &address) {
    const auto proposed = lastComponent(dispositionName(disposition));
    if (isFileName(proposed))
        return std::string(proposed);
    const Address url = parsed(address);
    const auto path = part(url, CURLUPART_PATH, CURLU_URLDECODE);
    const auto last = lastComponent(path);
    if (isFileName(last))
        return std::string(last);
    const auto host = part(url, CURLUPART_HOST);
    return host.empty() ? "Unknown" : host;
}

} // namespace vant
