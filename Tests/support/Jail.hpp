#pragma once
#include <filesystem>
#include <string>
#include <string_view>

namespace vant::test {

/// A temporary folder that removes itself, read-only leftovers included.
class Jail {
public:
    Jail();
    ~Jail();
    Jail(const Jail &) = delete;
    Jail &operator=(const Jail &) = delete;

    [[nodiscard]] const std::filesystem::path &root() const { return root_; }
    /// Full path of a relative one.
    [[nodiscard]] std::filesystem::path path(std::string_view relative) const { return root_ / relative; }

private:
    std::filesystem::path root_;
};

/// Writes a file, its folders included. Returns the path.
std::filesystem::path writeFile(const std::filesystem::path &path, std::string_view content);

/// Writes an executable file, its folders included. Returns the path.
std::filesystem::path writeProgram(const std::filesystem::path &path, std::string_view content);

/// The whole content of a file, empty when it cannot be read.
[[nodiscard]] std::string contentsOf(const std::filesystem::path &path);

} // namespace vant::test
