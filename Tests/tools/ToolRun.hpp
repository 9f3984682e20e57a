#pragma once
#include <chrono>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace vant::test {

/// Whether the tools are built with a sanitizer: their time and memory say nothing then.
inline constexpr bool toolsAreInstrumented = VANT_SANITIZED != 0;

/// How a tool ended and what it wrote.
struct ToolRun {
    int status = -1; ///< exit status; -1 when a signal ended it
    int signal = 0;  ///< the signal that ended it, 0 for none
    std::string output;
    std::string errors;
    std::vector<std::string> writes; ///< standard output, one element for each write of the tool
    long peakKilobytes = 0;          ///< largest memory of the tool, or of one of its children
    double cpuSeconds = 0;           ///< of the tool and its children
};

enum class Reader {
    Reads,    ///< standard output is read to its end
    GoneAway, ///< nobody ever reads it: the other end is closed from the start
};

/// Variables that the child sees beside the ones inherited; an empty value removes one.
using Environment = std::vector<std::pair<std::string, std::string>>;

/// Runs a tool to its end, standard output on a socket that keeps the tool's writes apart. A tool that takes longer
/// than the limit is killed, which shows as signal 9.
[[nodiscard]] ToolRun runTool(const std::filesystem::path &tool, const std::vector<std::string> &arguments,
                              const Environment &environment = {}, Reader reader = Reader::Reads,
                              std::chrono::seconds limit = std::chrono::seconds(60));

/// The tools of this build.
[[nodiscard]] std::filesystem::path dittoTool();
[[nodiscard]] std::filesystem::path installerTool();

/// A small file system of its own in a folder; unmounted at the end. `mounted` is false where that is not allowed.
class SmallDisk {
public:
    SmallDisk(const std::filesystem::path &folder, const std::string &size);
    ~SmallDisk();
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    [[nodiscard]] bool mounted() const { return mounted_; }

private:
    std::filesystem::path folder_;
    bool mounted_ = false;
};

/// Every file, folder and link below the folder as "path" or "path -> target" or "path = content", sorted.
[[nodiscard]] std::vector<std::string> treeOf(const std::filesystem::path &folder);

} // namespace vant::test
