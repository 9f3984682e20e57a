#pragma once
#include <string>
#include <string_view>

namespace vant::tools {

/// What a component's "PackageInfo" says.
struct PackageInfo {
    std::string installLocation = "/";
    bool hasFiles = false;   ///< it announces a payload
    std::string preinstall;  ///< file among the component's scripts, empty for none
    std::string postinstall; ///< likewise
};

/// Throws ExpansionError when the text is no "PackageInfo".
[[nodiscard]] PackageInfo readPackageInfo(std::string_view text);

} // namespace vant::tools
