#include "ShellCharacters.hpp"

#include <charconv>

namespace vant::host {

constexpr std::string_view readByShells("\"$`\\\n\r\0", 7);

static std::string nameOf(char c) {
    switch (c) {
    case '\n':
        return "a line feed";
    case '\r':
        return "a carriage return";
    case '\0':
        return "a null character";
    default:
        return {c};
    }
}

/// The character that the text begins with, a percent-encoded one decoded.
static char leadingCharacter(std::string_view text) {
    unsigned code = 0;
    const bool encoded = text.size() >= 3 && text[0] == '%' &&
                         std::from_chars(text.data() + 1, text.data() + 3, code, 16).ptr == text.data() + 3;
    return encoded ? static_cast<char>(code) : text.front();
}

std::optional<std::string> shellCharacter(std::string_view location) {
    for (; !location.empty(); location.remove_prefix(1)) {
        const char c = leadingCharacter(location);
        if (readByShells.find(c) != std::string_view::npos)
            return nameOf(c);
    }
    return std::nullopt;
}

std::optional<std::string> shellCharacterInName(std::string_view name) {
    const std::size_t at = name.find_first_of(readByShells);
    return at != std::string_view::npos ? std::optional(nameOf(name[at])) : std::nullopt;
}

} // namespace vant::host
