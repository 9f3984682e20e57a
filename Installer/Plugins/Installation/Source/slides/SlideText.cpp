#include "slides/SlideText.hpp"

namespace vant {

namespace {
constexpr std::string_view placeholder = "__MFG__";
}

std::string_view textBetween(std::string_view content, std::string_view opening, std::string_view closing) noexcept {
    const std::string_view before = content.substr(0, content.find(closing));
    const auto start = before.rfind(opening);
    return start == std::string_view::npos ? before : before.substr(start + opening.size());
}

std::string withVendorName(std::string_view text, std::string_view vendor) {
    std::string filled;
    for (auto at = text.find(placeholder); at != std::string_view::npos; at = text.find(placeholder)) {
        filled.append(text.substr(0, at)).append(vendor);
        text.remove_prefix(at + placeholder.size());
    }
    return filled.append(text);
}

} // namespace vant
