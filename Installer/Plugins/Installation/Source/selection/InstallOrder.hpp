#pragma once
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vant {

/// Which value of a component record names it.
enum class RecordName { none, type, componentName };

/// The value that names the records of a list: "TYPE" for install type "CD", "componentname" for "SmartUpdate", none
/// for any other.
[[nodiscard]] RecordName recordName(std::string_view installType) noexcept;

/// The order in which records are installed, as positions in the list given: records with a known name by the required
/// order, then all others; within one name, and among the others, as they stood. Every position appears once. Absent
/// names count as unknown.
[[nodiscard]] std::vector<std::size_t> installOrder(std::span<const std::optional<std::string>> names);

} // namespace vant
