#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vant {

/// The value of an attribute of the first element with that name ("pkg-info", "install-location"), entities decoded;
/// nothing when the element or its attribute is missing. Comments are passed over.
[[nodiscard]] std::optional<std::string> attributeIn(std::string_view xml, std::string_view element,
                                                     std::string_view attribute);

/// The text of every element with that name, in document order, trimmed, entities decoded; empty texts are left out.
[[nodiscard]] std::vector<std::string> textsIn(std::string_view xml, std::string_view element);

/// The string behind a key of a property list in XML form; nothing when it is missing or no string.
[[nodiscard]] std::optional<std::string> propertyIn(std::string_view plist, std::string_view key);

/// The component packages that a distribution names, each once, in its order: "#Some%20Name.pkg" is "Some Name.pkg".
[[nodiscard]] std::vector<std::string> componentsOf(std::string_view distribution);

} // namespace vant
