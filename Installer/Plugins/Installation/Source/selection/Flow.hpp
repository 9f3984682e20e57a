#pragma once
#include <cstddef>

namespace vant {

/// Where a run's packages come from. Both flows share one chain of packages and differ in names, formulas and endings.
enum class Flow { Media, Web };

/// Whether the switches of the user settings allow the web flow: asked for, and no web error reported earlier.
[[nodiscard]] constexpr bool isWebFlowAllowed(bool smartUpdate, bool webError) noexcept {
    return smartUpdate && !webError;
}

/// The flow of a run: the web only when it is allowed and something was selected for it.
[[nodiscard]] constexpr Flow chooseFlow(bool webFlowAllowed, std::size_t webSelectionCount) noexcept {
    return webFlowAllowed && webSelectionCount > 0 ? Flow::Web : Flow::Media;
}

} // namespace vant
