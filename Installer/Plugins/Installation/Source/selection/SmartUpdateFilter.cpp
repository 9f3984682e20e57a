#include "selection/SmartUpdateFilter.hpp"

#include "base/Paths.hpp"
#include "selection/ComponentCatalogue.hpp"

#include <algorithm>
#include <string_view>
#include <unordered_set>

namespace vant {

namespace {

/// Positions at which the test holds.
template<class Test>
std::vector<std::size_t> positionsWhere(std::span<const std::optional<std::string>> values, Test test) {
    std::vector<std::size_t> positions;
    for (std::size_t i = 0; i < values.size(); ++i)
        if (values[i] && test(*values[i]))
            positions.push_back(i);
    return positions;
}

} // namespace

std::vector<std::size_t> redundantRecords(std::span<const std::optional<std::string>> installerPaths) {
    std::unordered_set<std::string_view> seen;
    seen.reserve(installerPaths.size());
    return positionsWhere(installerPaths, [&seen](std::string_view path) { return !seen.insert(path).second; });
}

std::vector<std::size_t> legacyScanRecords(std::span<const std::optional<std::string>> componentNames) {
    return positionsWhere(componentNames, [](std::string_view name) {
        const Component *known = findComponent(name);
        return known && known->isLegacy;
    });
}

bool holdsUninstaller(std::span<const std::optional<std::string>> installerPaths) noexcept {
    return std::ranges::any_of(installerPaths, [](const std::optional<std::string> &path) {
        return path && lastPathComponent(*path) == uninstallerPackage;
    });
}

} // namespace vant
