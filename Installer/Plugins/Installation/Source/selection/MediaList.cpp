#include "selection/MediaList.hpp"

namespace vant {

std::vector<MediaComponent> addedMediaComponents(const MediaSources &sources) {
    std::vector<MediaComponent> added{{sources.uninstaller, "Printer Software Uninstaller"}};
    // Two scan drivers bring the second package twice; the installer is content with that, and hosts count on it.
    for (const MediaComponent &component : sources.selection)
        if (component.kind == "Scan Driver")
            added.push_back({sources.secondScanDriver, "Scan Driver"});
    if (sources.manualWanted)
        added.push_back({sources.manual, "User's Guide"});
    return added;
}

} // namespace vant
