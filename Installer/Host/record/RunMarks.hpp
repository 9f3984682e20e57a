#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vant::host {

/// A moment of a run. Packages install one after another, so what was said and written between two moments belongs to
/// one of them.
struct Mark {
    std::size_t logSize = 0; ///< how much the log held
    std::int64_t time = 0;   ///< nanoseconds, by the clock that files are stamped with
};

/// The moment now, and returns only after it, which takes some milliseconds. The log is a descriptor, of which anything
/// but a file counts as empty. Any thread.
[[nodiscard]] Mark markNow(int log) noexcept;

/// What a log descriptor's file holds; nothing for anything but a file.
[[nodiscard]] std::string logText(int log);

/// What programs said between each mark and the next, line by line, without the host's own lines. One fewer than marks.
[[nodiscard]] std::vector<std::vector<std::string>> messagesBetween(std::string_view log,
                                                                    const std::vector<Mark> &marks);

/// How many files and links below the folder were written between each mark and the next. One fewer than marks.
[[nodiscard]] std::vector<std::size_t> filesBetween(const std::string &folder, const std::vector<Mark> &marks);

/// An archive that could not be expanded, and what the expanding tool said of it.
struct ExpansionFailure {
    std::string archive; ///< its file name
    std::string words;
};

/// The archives of the folder that the log names as not expanded, in its order.
[[nodiscard]] std::vector<ExpansionFailure> expansionFailures(std::string_view log, std::string_view folder);

} // namespace vant::host
