#include "Locations.hpp"

#include <array>
#include <cstdio>

namespace vant::host {

static bool isAddress(std::string_view location) {
    return location.find("://") != std::string_view::npos;
}

/// A percent sign stays: a location may have been encoded by whoever wrote it.
static bool standsInAddress(unsigned char c) {
    constexpr std::string_view marks = "-._~/%!$&'()*+,;=:@?";
    const bool alphanumeric = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    return alphanumeric || marks.find(static_cast<char>(c)) != std::string_view::npos;
}

static std::string percentEncoded(std::string_view location) {
    std::string text;
    for (const char c : location) {
        const auto byte = static_cast<unsigned char>(c);
        std::array<char, 4> code{};
        std::snprintf(code.data(), code.size(), "%%%02X", static_cast<unsigned>(byte));
        text += standsInAddress(byte) ? std::string(1, c) : std::string(code.data());
    }
    return text;
}

std::string absoluteLocation(std::string_view location, std::string_view base) {
    if (location.empty() || location.front() == '/' || isAddress(location) || base.empty())
        return std::string(location);
    std::string whole(base);
    if (whole.back() != '/')
        whole += '/';
    return whole + (isAddress(base) ? percentEncoded(location) : std::string(location));
}

} // namespace vant::host
