#pragma once
#include <string>
#include <utility>
#include <vector>

namespace vant::samples {

/// Property list values as XML text. Keys and strings are escaped.
[[nodiscard]] std::string plistString(const std::string &text);
[[nodiscard]] std::string plistArray(const std::vector<std::string> &values);
[[nodiscard]] std::string plistDictionary(const std::vector<std::pair<std::string, std::string>> &values);
/// The whole document around its root value.
[[nodiscard]] std::string plistDocument(const std::string &root);

/// What a user selected: a component's kind and where it lies.
struct Selected {
    std::string type;
    std::string location;
};

/// A selection file: an array of dictionaries whose values are dictionaries with the string under "text".
[[nodiscard]] std::string selectionDocument(const std::vector<Selected> &selection);

} // namespace vant::samples
