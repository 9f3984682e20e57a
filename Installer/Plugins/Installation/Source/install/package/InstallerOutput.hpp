#pragma once
#include <optional>

namespace vant {

/// The percentage of a progress line, read from its whole part alone.
struct Percentage {
    double value = 0.0; ///< as a decimal number
    int whole = 0;      ///< as an integer; 100 is a finished package
};

/// What a line means for the reading of the installer's output.
enum class LineVerdict { ReadOn, Success, Failure };

struct InstallerLine {
    std::optional<Percentage> percentage;
    LineVerdict verdict = LineVerdict::ReadOn;
};

/// Reads one line of the package installer's output, or a piece of one, up to its terminating zero. Any bytes will do:
/// what is not understood is no progress. Allocates nothing.
[[nodiscard]] InstallerLine readInstallerLine(const char *line) noexcept;

} // namespace vant
