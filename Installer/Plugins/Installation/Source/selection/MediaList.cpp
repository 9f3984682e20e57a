#include "selection/MediaList.hpp"

#include "selection/ComponentCatalogue.hpp"

namespace vant {

std::vector<MediaComponent> addedMediaComponents(const MediaSources &sources) {
    std::vector<MediaComponent> added{{sources.uninstaller, std::string(uninstallerKind)}};
    // Two scan drivers bring the second package twice; the installer is content with that, and hosts count on it.
    for (const MediaComponent &component : sources.selection)
        if (component.kind == scanDriverKind)
            added.push_back({sources.secondScanDriver, component.kind});
    if (sources.manualWanted)
        added.push_back({sources.manual, std::string(manualKind)});
    return added;
}

} // namespace vant
