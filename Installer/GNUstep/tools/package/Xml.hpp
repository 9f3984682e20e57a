#pragma once
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vant::tools {

/// One element of an XML document.
struct XmlElement {
    std::string name;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::string text; ///< its own text, as it stands there
    std::vector<XmlElement> children;

    /// The value of an attribute; null when there is none.
    [[nodiscard]] const std::string *attribute(std::string_view wanted) const;
    /// The first child of that name; null when there is none.
    [[nodiscard]] const XmlElement *child(std::string_view wanted) const;
};

/// The document's root, in UTF-8 whatever the document's encoding. Throws ExpansionError when it isn't well formed, or
/// holds more than 100,000 elements or deeper ones than a hundred levels.
[[nodiscard]] XmlElement parseXml(std::string_view source);

/// The text without white space at its ends.
[[nodiscard]] std::string_view trimmed(std::string_view text);

} // namespace vant::tools
