#pragma once
#include "install/chain/InstallFlow.hpp"

#include <cstddef>
#include <string>

namespace vant {

/// Where the chain stands when a package has ended.
struct ChainState {
    int index = 0;            ///< position of the package that ended
    std::size_t outcomes = 0; ///< packages that have an outcome, by file name
    std::size_t packages = 0; ///< packages in the flow's list
    bool anyFailed = false;   ///< whether any outcome is "Failed"
};

enum class Announcement { Nothing, NextWebPackage, WebComplete, NextMediaPackage, MediaComplete, MediaFailed };

/// What follows the package: the trace message is written first, then the position is advanced, then it is announced.
struct ChainStep {
    Announcement announcement = Announcement::Nothing;
    std::string trace;
    bool advances = false;
};

/// The step after a package. Nothing is announced when there are more outcomes than packages.
[[nodiscard]] ChainStep stepAfterPackage(InstallFlow flow, const ChainState &state);

} // namespace vant
