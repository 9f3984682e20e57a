#include "platform/Places.hpp"

#include <mach-o/dyld.h>
#include <sys/param.h>

#include <array>

namespace vant::media {

namespace fs = std::filesystem;

fs::path programFolder() {
    std::array<char, MAXPATHLEN> path{};
    auto room = static_cast<std::uint32_t>(path.size());
    if (_NSGetExecutablePath(path.data(), &room) != 0)
        return {};
    std::error_code problem;
    return fs::canonical(path.data(), problem).parent_path();
}

fs::path tablesBeside(const fs::path &folder) {
    return folder / "VantInstallation.bundle" / "Contents" / "Resources";
}

fs::path toolsFor(const fs::path & /*folder*/) {
    return "/usr/bin";
}

} // namespace vant::media
