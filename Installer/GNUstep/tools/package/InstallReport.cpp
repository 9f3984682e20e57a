#include "GNUstep/tools/package/InstallReport.hpp"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>

namespace vant::tools {

namespace {

constexpr double firstPercent = 4;
constexpr double lastUnpackingPercent = 92;
constexpr double lastScriptPercent = 97;
constexpr double validatedPercent = 97.75;
constexpr double smallestStep = 1;

} // namespace

std::string percentLine(double value) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), value, std::chars_format::fixed, 6).ptr;
    return "installer:%" + std::string(digits.begin(), end);
}

double percentOf(double share) {
    return firstPercent + (lastUnpackingPercent - firstPercent) * std::clamp(share, 0.0, 1.0);
}

void InstallReport::begin(std::string_view packageName) {
    message("Package name is " + std::string(packageName));
    message("Installing at base path /");
    phase("Preparing for installation…");
    phase("Preparing the disk…");
    phase("Preparing " + std::string(packageName) + "…");
    phase("Waiting for other installations to complete…");
    phase("Configuring the installation…");
    state("");
}

void InstallReport::unpacked(double share) {
    const double value = percentOf(share);
    if (value < last_ + smallestStep)
        return;
    percent(value);
    phase("Writing files…");
}

void InstallReport::runningScripts() {
    percent(std::min(last_ + smallestStep, lastScriptPercent));
    phase("Running package scripts…");
}

void InstallReport::succeed() {
    phase("Validating packages…");
    percent(validatedPercent);
    state("Running installer actions…");
    state("");
    phase("Finishing the Installation…");
    state("");
    percent(100);
    phase("The software was successfully installed.");
    message("The install was successful.");
}

void InstallReport::fail(std::string_view reason) {
    phase("Validating packages…");
    percent(validatedPercent);
    message("The install failed (" + std::string(reason) + ")");
}

void InstallReport::message(std::string_view text) {
    line("installer: " + std::string(text));
}

void InstallReport::phase(std::string_view text) {
    if (detail_ == Detail::Progress)
        line("installer:PHASE:" + std::string(text));
}

void InstallReport::state(std::string_view text) {
    if (detail_ == Detail::Progress)
        line("installer:STATUS:" + std::string(text));
}

void InstallReport::percent(double value) {
    last_ = value;
    if (detail_ == Detail::Progress)
        line(percentLine(value));
}

void InstallReport::line(std::string_view text) {
    std::string whole(text);
    std::ranges::replace(whole, '\n', ' ');
    whole += '\n';
    for (std::string_view rest = whole; !rest.empty();) {
        const auto count = ::write(STDOUT_FILENO, rest.data(), rest.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return;
        rest.remove_prefix(static_cast<std::size_t>(count));
    }
}

} // namespace vant::tools
