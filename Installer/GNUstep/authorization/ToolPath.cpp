#include "GNUstep/authorization/ToolPath.hpp"

#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <sstream>
#include <unistd.h>

namespace vant {

std::string carriedTools() {
    Dl_info code{};
    if (dladdr(reinterpret_cast<void *>(&carriedTools), &code) == 0 || code.dli_fname == nullptr)
        return {};
    std::error_code error;
    const auto file = std::filesystem::canonical(code.dli_fname, error);
    return error ? std::string{} : (file.parent_path() / "Resources/tools").string();
}

void appendToPath(const std::string &folder) {
    const char *const variable = std::getenv("PATH");
    const std::string path = variable != nullptr ? variable : "/usr/local/bin:/usr/bin:/bin";
    if ((':' + path + ':').find(':' + folder + ':') == std::string::npos)
        setenv("PATH", (path + ':' + folder).c_str(), 1);
}

std::string programInPath(const std::string &name) {
    const char *const variable = std::getenv("PATH");
    std::error_code ignored;
    std::istringstream folders(variable != nullptr ? variable : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        std::string candidate = std::filesystem::path(folder) / name;
        if (std::filesystem::is_regular_file(candidate, ignored) && access(candidate.c_str(), X_OK) == 0)
            return candidate;
    }
    return {};
}

} // namespace vant
