#pragma once
#include "selection/ComponentCatalogue.hpp"

#include <string_view>

namespace vant {

/// The display name of a component, compared exactly. Names that are not in the catalogue are shown as they are.
[[nodiscard]] DisplayName displayName(Flow flow, std::string_view componentName) noexcept;

/// Whether the component is the flow's printer driver, while whose installation the marker file exists.
[[nodiscard]] bool isPrinterDriver(Flow flow, std::string_view componentName) noexcept;

} // namespace vant
