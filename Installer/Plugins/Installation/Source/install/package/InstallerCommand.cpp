#include "install/package/InstallerCommand.hpp"

namespace vant {

std::array<std::string, 5> installerArguments(std::string_view packagePath) {
    return {"-verboseR", "-pkg", std::string(packagePath), "-target", "/"};
}

} // namespace vant
