#include "selection/SelectedSoftware.hpp"

#include "selection/ComponentCatalogue.hpp"

#include <algorithm>

namespace vant {

std::vector<std::string_view> newlySelectedSoftware(std::span<const std::optional<std::string>> kinds,
                                                    std::span<const std::optional<std::string>> listed) {
    std::vector<std::string_view> added;
    for (const std::optional<std::string> &kind : kinds) {
        const Component *known = kind ? findComponent(*kind) : nullptr;
        if (!known || !known->isReported || std::ranges::find(added, known->name) != added.end())
            continue;
        if (std::ranges::find(listed, kind) == listed.end())
            added.push_back(known->name);
    }
    return added;
}

} // namespace vant
