#pragma once
#include "read/PackageReading.hpp"

#include <string>
#include <vector>

namespace vant::media {

/// What an archive expands into.
struct ExpansionState {
    std::string fault;                  ///< the tool's own words; empty when the whole of it was expanded
    std::vector<PackageState> packages; ///< of the items asked for, in their order; none after a fault
};

/// Expands an archive by `tool`, which is called as the pane calls ditto, into a temporary folder of its own, reads the
/// packages at the items through, and removes the folder. Throws std::runtime_error when there is no such folder to be
/// had or the tool cannot be started. Main thread.
[[nodiscard]] ExpansionState readExpanded(const std::string &tool, const std::string &archive, bool isZip,
                                          const std::vector<std::string> &items);

} // namespace vant::media
