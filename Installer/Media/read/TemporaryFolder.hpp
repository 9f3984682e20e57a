#pragma once
#include <string>

namespace vant::media {

/// A new folder that goes with its owner, and all that is in it. Throws std::runtime_error when there is none to be
/// had.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;
    ~TemporaryFolder();
    [[nodiscard]] const std::string &path() const { return path_; }

private:
    std::string path_;
};

} // namespace vant::media
