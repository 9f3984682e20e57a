#pragma once
#include "selection/MediaList.hpp"
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vant {

/// A web record made of one.
struct MergedRecord {
    std::optional<std::string> installerPath;
    std::optional<std::string> componentName;
    std::optional<std::size_t> component; ///< position in the media selection; nothing for a second scan driver
};

/// The records that the media selection adds to the web list, in the order in which they are appended: the last
/// component first. A component is left out when the list, additions included, holds a package of the same file name;
/// one without a location never is. Every added scan driver is followed by the second scan driver.
[[nodiscard]] std::vector<MergedRecord> mergeMedia(std::span<const MediaComponent> media,
                                                   std::span<const std::optional<std::string>> listedPaths,
                                                   const std::optional<std::string> &secondScanDriver);

} // namespace vant
