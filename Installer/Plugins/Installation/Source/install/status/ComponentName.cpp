#include "install/status/ComponentName.hpp"

namespace vant {

DisplayName displayName(Flow flow, std::string_view componentName) noexcept {
    const Component *known = findComponent(componentName);
    if (!known)
        return {};
    return flow == Flow::Web ? known->web : known->media;
}

bool isPrinterDriver(Flow flow, std::string_view componentName) noexcept {
    const Component *known = findComponent(componentName);
    return known && known->printerDriverOf == flow;
}

} // namespace vant
