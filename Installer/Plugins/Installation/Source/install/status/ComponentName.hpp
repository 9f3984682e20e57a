#pragma once
#include "selection/Flow.hpp"

#include <string_view>

namespace vant {

/// How a component is called in the status line.
struct DisplayName {
    enum class Source { Itself, StringKey, Text };
    Source source = Source::Itself;
    std::string_view text; ///< the key or the text; empty for a component that is called by its own name
};

/// The display name of a component, compared exactly. Names that are not in the flow's table are shown as they are.
[[nodiscard]] DisplayName displayNameOf(Flow flow, std::string_view componentName) noexcept;

/// Whether the component is the flow's printer driver, while whose installation the marker file exists.
[[nodiscard]] bool isPrinterDriver(Flow flow, std::string_view componentName) noexcept;

} // namespace vant
