#pragma once
#include <chrono>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace vant::tools {

/// Runs programs in a root of their own (with bubblewrap): its "/" is a folder that they may write into; this machine's
/// programs and libraries are there to be read, and nothing else of this machine: no file, no process, no network.
/// Folders that have to stand in the root for that are removed again when they are empty.
class PrivateRoot {
public:
    using Variables = std::vector<std::pair<std::string, std::string>>;

    explicit PrivateRoot(std::filesystem::path root) : root_(std::move(root)) {}

    /// Whether this machine lets such a root be made.
    [[nodiscard]] bool isAvailable() const;
    /// Runs a command in a folder of the root ("/Library") with these variables and no other, its output on standard
    /// error. Gives its exit status, or -1 when it was ended by a signal or by the limit.
    [[nodiscard]] int run(const std::string &folder, const std::vector<std::string> &command,
                          const Variables &variables, std::chrono::seconds limit) const;

private:
    [[nodiscard]] std::vector<std::string> wrapping(const std::string &folder, const Variables &variables) const;

    std::filesystem::path root_;
};

} // namespace vant::tools
