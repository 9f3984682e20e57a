#include "read/TemporaryFolder.hpp"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace vant::media {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() : path_(fs::temp_directory_path() / "vantmedia.XXXXXX") {
    if (mkdtemp(path_.data()) == nullptr)
        throw std::runtime_error("no temporary folder can be made in " + fs::temp_directory_path().string());
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

} // namespace vant::media
