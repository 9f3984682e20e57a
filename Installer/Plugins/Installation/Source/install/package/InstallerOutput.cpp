#include "install/package/InstallerOutput.hpp"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <string_view>

namespace vant {

namespace {

constexpr std::string_view progressMarker = "installer:%";
constexpr std::string_view successStart = "%100";
constexpr int pointLimit = 5; // the point stands among this many characters

constexpr bool continuesCharacter(char byte) noexcept {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// The text before the first point among the first characters of the text, which may be shorter than the limit.
std::optional<std::string_view> wholePart(std::string_view text) noexcept {
    int characters = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if ((i == 0 || !continuesCharacter(text[i])) && ++characters > pointLimit)
            break;
        if (text[i] == '.')
            return text.substr(0, i);
    }
    return std::nullopt;
}

std::string_view withoutLeadingBlanks(std::string_view text) noexcept {
    const std::size_t start = text.find_first_not_of(" \t\r\n\v\f");
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

/// Takes a signed whole number off the front of the text; takes nothing where there is none.
std::optional<int> takeInteger(std::string_view &text) noexcept {
    const bool hasPlus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    const std::string_view digits = text.substr(hasPlus ? 1 : 0);
    int value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc())
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value;
}

/// Reads the text as Cocoa reads numbers from strings: the longest number at the front, 0 where there is none.
Percentage readPercentage(std::string_view text) noexcept {
    std::string_view rest = withoutLeadingBlanks(text);
    const std::optional<int> whole = takeInteger(rest);
    if (!whole)
        return {};
    double value = *whole;
    if (!rest.empty() && (rest.front() == 'e' || rest.front() == 'E')) {
        rest.remove_prefix(1);
        value *= std::pow(10.0, takeInteger(rest).value_or(0));
    }
    return {.value = value, .whole = *whole};
}

std::optional<Percentage> progressPercentage(std::string_view line) noexcept {
    const std::size_t marker = line.find(progressMarker);
    if (marker == std::string_view::npos)
        return std::nullopt;
    const auto text = wholePart(line.substr(marker + progressMarker.size()));
    return text ? std::optional(readPercentage(*text)) : std::nullopt;
}

int convertedItems(const char *line, const char *pattern, int *destination) noexcept {
    return std::sscanf(line, pattern, destination);
}

/// One may be tempted to compare for "fail" here, but packages print that word on their way to success. The pattern
/// converts nothing, so no line is a failure and a package ends with its output; the chain is built on that.
bool isFailure(const char *line) noexcept {
    int converted = 0;
    return convertedItems(line, "fail\n", &converted) == 1;
}

} // namespace

InstallerLine readInstallerLine(const char *line) noexcept {
    const std::string_view text(line);
    InstallerLine read{.percentage = progressPercentage(text)};
    if (text.starts_with(successStart))
        read.verdict = LineVerdict::Success;
    else if (isFailure(line))
        read.verdict = LineVerdict::Failure;
    return read;
}

} // namespace vant
