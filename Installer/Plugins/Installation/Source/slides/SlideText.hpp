#pragma once
#include <string>
#include <string_view>

namespace vant {

/// The text of one element of a slide file, which is searched, not parsed: what precedes the first closing tag, after
/// the last opening tag in that. All of what precedes when there is no opening tag, all of the content when there is no
/// closing tag. Blanks, line ends and entities stay as they are.
[[nodiscard]] std::string_view textBetween(std::string_view content, std::string_view opening,
                                           std::string_view closing) noexcept;

/// The text with every "__MFG__" replaced by the vendor's name. A name that holds the placeholder is not searched
/// again.
[[nodiscard]] std::string withVendorName(std::string_view text, std::string_view vendor);

} // namespace vant
