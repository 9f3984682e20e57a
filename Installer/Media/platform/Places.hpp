#pragma once
#include <filesystem>

/// Where the program finds what is not its own.
namespace vant::media {

/// The folder that this program's file lies in, links resolved. Empty when the system does not tell.
[[nodiscard]] std::filesystem::path programFolder();

/// The folder of the plug-in's string tables, when its bundle lies in that folder.
[[nodiscard]] std::filesystem::path tablesBeside(const std::filesystem::path &folder);

/// The folder of the tools that the pane calls, for a program in that folder.
[[nodiscard]] std::filesystem::path toolsFor(const std::filesystem::path &folder);

} // namespace vant::media
