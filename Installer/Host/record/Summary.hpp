#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vant::host {

/// A package of the run's list. The outcome is absent when the package was not reached.
struct Package {
    std::string name;
    std::string component;
    std::string path;
    std::optional<std::string> outcome;
};

/// How a run ended.
struct Summary {
    std::string flow;
    std::string language;
    bool continued = false;            ///< the pane told the host to go on
    std::string valid;                 ///< the pane's own word, "YES" or "NO"
    std::string status;                ///< the last status text
    std::string reason;                ///< why the run ended, in words
    std::vector<Package> packages;     ///< in the order of installation
    std::vector<std::string> setAside; ///< folders set aside on the desktop
    std::size_t installedFiles = 0;
    double seconds = 0;
};

/// The summary as a JSON object, indented, with a line feed at the end.
[[nodiscard]] std::string json(const Summary &summary);

/// A JSON string literal; the text is UTF-8.
[[nodiscard]] std::string jsonQuoted(std::string_view text);

/// Files and links below the folder; 0 when there is no such folder.
[[nodiscard]] std::size_t fileCount(const std::string &folder);

/// Names of the folders inside the folder, sorted; none when there is no such folder.
[[nodiscard]] std::vector<std::string> folderNames(const std::string &folder);

} // namespace vant::host
