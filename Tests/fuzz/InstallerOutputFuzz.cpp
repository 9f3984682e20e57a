#include "install/package/InstallerOutput.hpp"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <regex>
#include <string>

namespace {

/// The text before the point among the first five characters, counted the slow way; false without one.
bool wholePart(const std::string &text, std::string &part) {
    std::size_t at = 0;
    for (int character = 0; character < 5 && at < text.size(); ++character) {
        if (text[at] == '.') {
            part = text.substr(0, at);
            return true;
        }
        ++at;
        while (at < text.size() && (static_cast<unsigned char>(text[at]) >> 6U) == 2U)
            ++at;
    }
    return false;
}

void require(bool holds) {
    if (!holds)
        std::abort();
}

void checkNumber(const std::string &part, const vant::Percentage &read) {
    static const std::regex number("^[ \\t\\r\\n\\v\\f]*([+-]?[0-9]+)([eE][+-]?[0-9]+)?");
    std::smatch match;
    if (!std::regex_search(part, match, number)) {
        require(read.whole == 0 && read.value == 0.0);
        return;
    }
    const double value = std::strtod((match[1].str() + match[2].str()).c_str(), nullptr);
    require(read.whole == std::atoi(match[1].str().c_str()));
    require(std::fabs(read.value - value) <= std::fabs(value) * 1e-12);
}

} // namespace

// Every line reads as a slow reading of it does, and no line is a failure.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string line(std::string(reinterpret_cast<const char *>(data), size).c_str());
    const vant::InstallerLine read = vant::readInstallerLine(line.c_str());
    const bool succeeds = line.rfind("%100", 0) == 0;
    require(read.verdict == (succeeds ? vant::LineVerdict::Success : vant::LineVerdict::ReadOn));
    const std::size_t marker = line.find("installer:%");
    std::string part;
    const bool expected = marker != std::string::npos && wholePart(line.substr(marker + 11), part);
    require(read.percentage.has_value() == expected);
    if (expected)
        checkNumber(part, *read.percentage);
    return 0;
}
