#pragma once
#include <string>

namespace vant {

/// The folder of the tools that travel with the code: "Resources/tools" beside the loaded file that holds this
/// function.
[[nodiscard]] std::string carriedTools();

/// Puts a folder at the end of the environment's PATH, so that tools of the system are preferred; once only.
void appendToPath(const std::string &folder);

/// The full path of a program of that name in PATH; empty when there is none.
[[nodiscard]] std::string programInPath(const std::string &name);

} // namespace vant
