#include "install/chain/UnpackEnding.hpp"

namespace vant {

UnpackEnding unpackEnding(const UnpackState &state) noexcept {
    // Not "less than": past the count, too, nothing follows any more.
    if (state.expanded != state.selected)
        return UnpackEnding::MoreToCome;
    if (!state.setAside)
        return UnpackEnding::Install;
    return state.desktopFolder ? UnpackEnding::ShowSetAside : UnpackEnding::SetAsideMissing;
}

} // namespace vant
