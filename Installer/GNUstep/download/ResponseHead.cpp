#include "GNUstep/download/ResponseHead.hpp"

#include <algorithm>
#include <charconv>

namespace vant {
namespace {

/// What curl itself allows from version 8.3 on.
constexpr std::size_t maxLength = 300UL * 1024;
constexpr int firstFinalStatus = 200;

std::string_view trimmed(std::string_view text) noexcept {
    const auto start = text.find_first_not_of(" \t");
    const auto end = text.find_last_not_of(" \t\r\n");
    return start == std::string_view::npos || end < start ? std::string_view{} : text.substr(start, end - start + 1);
}

template<class Number>
Number number(std::string_view text, Number otherwise) noexcept {
    Number value = otherwise;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

} // namespace

ResponseHead::State ResponseHead::addLine(std::string_view line) {
    length_ += line.size();
    if (length_ > maxLength)
        return State::tooLong;
    const auto text = trimmed(line);
    if (text.starts_with("HTTP/"))
        beginResponse(text);
    else if (text.empty() && response_.status >= firstFinalStatus)
        return State::complete;
    else if (const auto colon = text.find(':'); response_.status != 0 && colon != std::string_view::npos)
        response_.fields.push_back({std::string(text.substr(0, colon)), std::string(trimmed(text.substr(colon + 1)))});
    return State::incomplete;
}

void ResponseHead::beginResponse(std::string_view statusLine) {
    const auto blank = std::min(statusLine.find(' '), statusLine.size());
    response_ = {};
    response_.version = statusLine.substr(0, blank);
    response_.status = std::max(number(trimmed(statusLine.substr(blank)), 0), 0);
}

std::int64_t announcedLength(const DownloadResponse &response) noexcept {
    if (!response.field("Transfer-Encoding").empty())
        return -1;
    return std::max<std::int64_t>(number<std::int64_t>(response.field("Content-Length"), -1), -1);
}

} // namespace vant
