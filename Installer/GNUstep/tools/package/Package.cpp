#include "GNUstep/tools/package/Package.hpp"

#include <algorithm>
#include <filesystem>
#include <numeric>

namespace vant::tools {

std::uint64_t Package::size() const {
    return std::accumulate(components.begin(), components.end(), std::uint64_t{0},
                           [](std::uint64_t sum, const Component &component) { return sum + component.size; });
}

bool Package::hasScripts() const {
    return std::ranges::any_of(components, &Component::hasScripts);
}

Package openPackage(const std::string &path) {
    auto bare = path;
    while (bare.size() > 1 && bare.ends_with('/'))
        bare.pop_back();
    return std::filesystem::is_directory(bare) ? openBundlePackage(bare) : openFlatPackage(bare);
}

void forEachPart(const Package &package, const PartUse &use) {
    if (package.form == Package::Form::Flat)
        return forEachFlatPart(package, use);
    for (std::size_t i = 0; i < package.components.size(); ++i) {
        FileSource source(package.components[i].payload);
        use(i, Part::Payload, source);
    }
}

} // namespace vant::tools
