#include "RunMarks.hpp"

#include "LogFiles.hpp"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <filesystem>
#include <unistd.h>

namespace vant::host {

namespace fs = std::filesystem;

static constexpr std::string_view expansionPrefix = "ditto: ";

/// The size of a regular file behind a descriptor, 0 for anything else.
static std::size_t fileSize(int log) noexcept {
    struct stat status {};
    return fstat(log, &status) == 0 && S_ISREG(status.st_mode) ? static_cast<std::size_t>(status.st_size) : 0;
}

Mark markNow(int log) noexcept {
    const Mark mark = {fileSize(log), fileTime()};
    // What is written from now on must not be stamped with the same time: the clock takes some milliseconds to go on.
    constexpr timespec moment = {0, 500'000};
    while (coarseTime() <= mark.time)
        nanosleep(&moment, nullptr);
    return mark;
}

std::string logText(int log) {
    std::string text(fileSize(log), '\0');
    // Through a descriptor of its own: the log's may be for writing only.
    const int file = text.empty() ? -1 : openAgain(log);
    std::size_t taken = 0;
    while (file >= 0 && taken < text.size()) {
        const ssize_t count = read(file, text.data() + taken, text.size() - taken);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        taken += static_cast<std::size_t>(count);
    }
    if (file >= 0)
        close(file);
    text.resize(taken);
    return text;
}

/// The platform logs under the process's name; the host's own words begin with it.
static bool isOfHost(std::string_view line) noexcept {
    return line.starts_with("VantHost: ") || line.find(" VantHost[") != std::string_view::npos;
}

static std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (!line.empty() && !isOfHost(line))
            lines.emplace_back(line);
    }
    return lines;
}

std::vector<std::vector<std::string>> messagesBetween(std::string_view log, const std::vector<Mark> &marks) {
    std::vector<std::vector<std::string>> messages;
    for (std::size_t i = 1; i < marks.size(); ++i) {
        const std::size_t start = std::min(marks[i - 1].logSize, log.size());
        const std::size_t end = std::clamp(marks[i].logSize, start, log.size());
        messages.push_back(linesOf(log.substr(start, end - start)));
    }
    return messages;
}

/// When a file was last written or moved; links are not followed. The start of time for a file that has gone.
static std::int64_t changeTime(const fs::path &file) noexcept {
    struct stat status {};
    return lstat(file.c_str(), &status) == 0 ? changeTime(status) : 0;
}

std::vector<std::size_t> filesBetween(const std::string &folder, const std::vector<Mark> &marks) {
    std::vector<std::size_t> counts(marks.empty() ? 0 : marks.size() - 1);
    std::error_code error;
    for (fs::recursive_directory_iterator item(folder, error), end; !error && item != end; item.increment(error)) {
        if (item->is_directory(error) && !item->is_symlink(error))
            continue;
        const auto after = std::ranges::lower_bound(marks, changeTime(item->path()), {}, &Mark::time);
        if (after != marks.begin() && after != marks.end())
            ++counts[static_cast<std::size_t>(after - marks.begin()) - 1];
    }
    return counts;
}

std::vector<ExpansionFailure> expansionFailures(std::string_view log, std::string_view folder) {
    const std::string prefix = std::string(expansionPrefix).append(folder) + '/';
    std::vector<ExpansionFailure> failures;
    for (const std::string &line : linesOf(log)) {
        const std::size_t colon = line.starts_with(prefix) ? line.find(": ", prefix.size()) : std::string::npos;
        if (colon != std::string::npos)
            failures.push_back({line.substr(prefix.size(), colon - prefix.size()), line.substr(colon + 2)});
    }
    return failures;
}

} // namespace vant::host
