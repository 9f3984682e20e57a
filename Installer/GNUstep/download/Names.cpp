#include "GNUstep/download/Names.hpp"

#include "GNUstep/download/Address.hpp"

#include <algorithm>
#include <cctype>

namespace vant {
namespace {

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
    const auto *const found = std::search(disposition.begin(), disposition.end(), key.begin(), key.end(),
                                          [](unsigned char a, unsigned char b) { return std::tolower(a) == b; });
    if (found == disposition.end())
        return {};
    auto value = disposition.substr(static_cast<std::size_t>(found - disposition.begin()) + key.size());
    if (value.starts_with('"'))
        return value.substr(1, value.find('"', 1) == std::string_view::npos ? value.size() : value.find('"', 1) - 1);
    value = value.substr(0, value.find(';'));
    const auto end = value.find_last_not_of(" \t");
    return end == std::string_view::npos ? std::string_view{} : value.substr(0, end + 1);
}

} // namespace

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
    const auto path = addressPath(address);
    const auto last = lastComponent(path);
    if (isFileName(last))
        return std::string(last);
    const auto host = addressHost(address);
    return isFileName(host) ? host : "Unknown";
}

} // namespace vant
