#include "selection/MediaMerge.hpp"

#include "base/Paths.hpp"
#include "selection/ComponentCatalogue.hpp"

#include <string_view>
#include <unordered_set>

namespace vant {
namespace {

// The names are views into the paths, all of which outlive the merge.
class Names {
public:
    void add(const std::optional<std::string> &path) {
        if (path)
            names_.insert(lastPathComponent(*path));
    }
    [[nodiscard]] bool holds(const std::optional<std::string> &path) const {
        return path && names_.contains(lastPathComponent(*path));
    }

private:
    std::unordered_set<std::string_view> names_;
};

} // namespace

std::vector<MergedRecord> mergeMedia(std::span<const MediaComponent> media,
                                     std::span<const std::optional<std::string>> listedPaths,
                                     const std::optional<std::string> &secondScanDriver) {
    Names names;
    for (const auto &path : listedPaths)
        names.add(path);
    std::vector<MergedRecord> added;
    for (std::size_t i = media.size(); i-- > 0;) {
        const MediaComponent &component = media[i];
        if (names.holds(component.location))
            continue;
        added.push_back({component.location, component.kind, i});
        names.add(component.location);
        if (component.kind != scanDriverKind)
            continue;
        added.push_back({secondScanDriver, component.kind, std::nullopt});
        names.add(secondScanDriver);
    }
    return added;
}

} // namespace vant
