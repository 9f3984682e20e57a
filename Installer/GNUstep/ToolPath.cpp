#include "ToolPath.hpp"

#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>

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

} // namespace vant
