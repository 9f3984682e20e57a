#pragma once
#include <string>
#include <string_view>

namespace vant::tools {

/// Writes an installation's lines to standard output, each at once, so that a reader sees them as they happen. A reader
/// that has gone away does not stop the installation. One thread.
class InstallReport {
public:
    enum class Detail {
        Outcome,  ///< messages alone
        Progress, ///< phases, states and percentages too ("-verboseR")
    };

    explicit InstallReport(Detail detail) : detail_(detail) {}

    /// The lines up to the first percentage.
    void begin(std::string_view packageName);
    /// `share` (0 to 1) of the payloads' bytes has been unpacked. Prints when that is a point or more above the last
    /// one.
    void unpacked(double share);
    /// Scripts of the package begin to run.
    void runningScripts();
    /// The lines after the last file, with either outcome.
    void succeed();
    void fail(std::string_view reason);

private:
    static void message(std::string_view text);
    void phase(std::string_view text);
    void state(std::string_view text);
    void percent(double value);
    static void line(std::string_view text);

    Detail detail_;
    double last_ = 0;
};

/// "installer:%" and the value with six decimals and a point, whatever the language.
[[nodiscard]] std::string percentLine(double value);

/// The percentage shown for a share (0 to 1, clamped) of the payload: unpacking lies between 4 and 92.
[[nodiscard]] double percentOf(double share);

} // namespace vant::tools
