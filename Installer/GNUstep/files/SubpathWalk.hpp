#pragma once
#include <functional>
#include <string>
#include <string_view>

namespace vant {

/// Gives `take` the path, relative to the folder, of every item below it: a folder before what it holds, otherwise in
/// the file system's order. `take` answers whether a folder is gone into. Links are not followed; what cannot be read
/// is given without contents. Nothing is given when the folder itself cannot be read. Any thread.
void walkSubpaths(const std::string &folder, const std::function<bool(std::string_view)> &take);

} // namespace vant
