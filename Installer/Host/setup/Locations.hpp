#pragma once
#include <string>
#include <string_view>

namespace vant::host {

/// Where a component lies: addresses and absolute paths stay as they stand, anything else is taken below the base,
/// which is a folder or an address. Below an address, what an address cannot hold is percent-encoded.
[[nodiscard]] std::string absoluteLocation(std::string_view location, std::string_view base);

} // namespace vant::host
