#include "selection/InstallOrder.hpp"

#include "selection/ComponentCatalogue.hpp"

namespace vant {

namespace {

/// The name's place in the required order; unknown, unranked and absent names share the place behind all others.
std::size_t place(const std::optional<std::string> &name) noexcept {
    const Component *known = name ? findComponent(*name) : nullptr;
    return known && known->isRanked ? static_cast<std::size_t>(known - components().data()) : components().size();
}

} // namespace

RecordName recordName(std::string_view installType) noexcept {
    if (installType == "CD")
        return RecordName::type;
    return installType == "SmartUpdate" ? RecordName::componentName : RecordName::none;
}

std::vector<std::size_t> installOrder(std::span<const std::optional<std::string>> names) {
    std::vector<std::vector<std::size_t>> places(components().size() + 1);
    for (std::size_t i = 0; i < names.size(); ++i)
        places.at(place(names[i])).push_back(i);
    std::vector<std::size_t> order;
    order.reserve(names.size());
    for (const std::vector<std::size_t> &positions : places)
        order.insert(order.end(), positions.begin(), positions.end());
    return order;
}

} // namespace vant
