#include "platform/Places.hpp"

namespace vant::media {

namespace fs = std::filesystem;

fs::path programFolder() {
    std::error_code problem;
    return fs::read_symlink("/proc/self/exe", problem).parent_path();
}

fs::path tablesBeside(const fs::path &folder) {
    return folder / "VantInstallation.bundle" / "Resources";
}

fs::path toolsFor(const fs::path &folder) {
    return folder / "tools";
}

} // namespace vant::media
