#pragma once
#include "RunMarks.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vant::host {

/// A package of the run's list.
struct Package {
    std::string name;
    std::string component;
    std::string path;
    std::optional<std::string> outcome;           ///< the pane's word; absent when the package was not reached
    std::optional<int> exitStatus = std::nullopt; ///< of its installer, 128 and more for a signal; absent: unknown
    std::vector<std::string> messages = {};       ///< what its installer said on standard error
    std::size_t installedFiles = 0;               ///< files and links that it left on the volume
};

/// True when the package was reached and nothing speaks against it. The pane's word alone tells little: "PIPE END" is
/// the outcome of every package whose installer's output has ended, good or bad. Where the exit status is not known, an
/// installer that has said something on standard error counts as failed.
[[nodiscard]] bool isInstalled(const Package &package);

/// How a run ended.
struct Summary {
    std::string version; ///< the plug-in's, empty when there was none to load
    std::string flow;
    std::string language;
    bool continued = false;                    ///< the pane told the host to go on
    std::string valid;                         ///< the pane's own word, "YES" or "NO"
    std::string status;                        ///< the last status text
    std::string reason;                        ///< why the run ended, in words
    int errorCode = 0;                         ///< of the last failed download, 0 when none has failed
    std::vector<Package> packages;             ///< in the order of installation
    std::vector<ExpansionFailure> notExpanded; ///< archives that could not be expanded
    std::vector<std::string> setAside;         ///< folders set aside on the desktop
    std::size_t installedFiles = 0;
    double seconds = 0;
};

/// The exit status of a run: 0 when the pane went on and everything is installed, 3 when it went on although something
/// is not, 1 when it did not get to its end.
[[nodiscard]] int exitStatus(const Summary &summary);

/// The summary as a JSON object, indented, with a line feed at the end.
[[nodiscard]] std::string json(const Summary &summary);

/// A JSON string literal; the text is UTF-8.
[[nodiscard]] std::string jsonQuoted(std::string_view text);

/// Files and links below the folder; 0 when there is no such folder.
[[nodiscard]] std::size_t fileCount(const std::string &folder);

/// Names of the folders inside the folder, sorted; none when there is no such folder.
[[nodiscard]] std::vector<std::string> folderNames(const std::string &folder);

} // namespace vant::host
