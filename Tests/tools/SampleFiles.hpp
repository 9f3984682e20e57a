#pragma once
#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace vant::test {

/// Name and number of files of each package that a sample manifest lists.
[[nodiscard]] std::map<std::string, std::size_t> manifestOf(const std::filesystem::path &file);

/// Number of items below a folder that are no folders.
[[nodiscard]] std::size_t filesBelow(const std::filesystem::path &folder);

/// Every string under a key "text" of a property list in XML form.
[[nodiscard]] std::set<std::string> textsOf(const std::filesystem::path &plist);

} // namespace vant::test
