#pragma once
#include <string>
#include <string_view>

namespace vant {

/// The status text of a package at work, and the trace message that says which word order was taken.
struct InstallingText {
    std::string text;
    std::string_view trace;
};

/// Puts the word for "Installing" and the component's name into the order of the host's language. The code is compared
/// exactly; an unknown or empty one gives the English order.
[[nodiscard]] InstallingText installingText(std::string_view languageCode, std::string_view word,
                                            std::string_view componentName);

} // namespace vant
