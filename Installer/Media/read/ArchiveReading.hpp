#pragma once
#include "read/PackageReading.hpp"

#include <functional>
#include <string>
#include <vector>

namespace vant::media {

/// What an archive expands into.
struct ExpansionState {
    std::string fault;                  ///< the tool's own words; empty when the whole of it was expanded
    std::vector<std::string> items;     ///< paths below the folder, as the pane lists them; none after a fault
    std::vector<PackageState> packages; ///< of the items that were asked for, in their order; none after a fault
};

/// Which of the items are packages to be read.
using Choice = std::function<std::vector<std::string>(const std::vector<std::string> &items)>;

/// Expands an archive by `tool`, which is called as the pane calls ditto, into a temporary folder of its own, lists it,
/// reads the packages of the choice through, and removes the folder. Throws std::runtime_error when there is no such
/// folder to be had or the tool cannot be started. Main thread.
[[nodiscard]] ExpansionState readExpanded(const std::string &tool, const std::string &archive, bool isZip,
                                          const Choice &choice);

} // namespace vant::media
