#pragma once
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

/// An empty folder of a test's own, removed at the end.
class TestFolder {
public:
    TestFolder() {
        std::string name = std::filesystem::temp_directory_path() / "vant-host-XXXXXX";
        folder_ = mkdtemp(name.data());
    }
    TestFolder(const TestFolder &) = delete;
    TestFolder &operator=(const TestFolder &) = delete;
    ~TestFolder() { std::filesystem::remove_all(folder_); }

    [[nodiscard]] std::string path() const { return folder_; }

    /// Writes a small file; its folders are made.
    void write(const std::filesystem::path &name) const {
        std::filesystem::create_directories((folder_ / name).parent_path());
        std::ofstream(folder_ / name) << "x";
    }

    void link(const std::filesystem::path &name) const { std::filesystem::create_symlink("nowhere", folder_ / name); }

private:
    std::filesystem::path folder_;
};
