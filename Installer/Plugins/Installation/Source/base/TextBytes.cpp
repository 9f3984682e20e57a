#include "base/TextBytes.hpp"

#include <cstddef>
#include <cstdint>

namespace vant {

namespace {

struct Form {
    std::size_t length;    ///< bytes of the character; 0 for a byte that begins none
    std::uint32_t bits;    ///< what the first byte says of it
    std::uint32_t minimum; ///< anything below has a shorter form
};

Form characterForm(unsigned char first) noexcept {
    if (first < 0x80U)
        return {.length = 1, .bits = first, .minimum = 0};
    if ((first & 0xE0U) == 0xC0U)
        return {.length = 2, .bits = first & 0x1FU, .minimum = 0x80};
    if ((first & 0xF0U) == 0xE0U)
        return {.length = 3, .bits = first & 0x0FU, .minimum = 0x800};
    if ((first & 0xF8U) == 0xF0U)
        return {.length = 4, .bits = first & 0x07U, .minimum = 0x10000};
    return {};
}

/// The length of the character at the head of the bytes, 0 when there is none.
std::size_t characterLength(std::string_view bytes) noexcept {
    const Form form = characterForm(static_cast<unsigned char>(bytes.front()));
    if (form.length == 0 || form.length > bytes.size())
        return 0;
    std::uint32_t character = form.bits;
    for (const char byte : bytes.substr(1, form.length - 1)) {
        if ((static_cast<unsigned char>(byte) & 0xC0U) != 0x80U)
            return 0;
        character = character << 6U | (static_cast<unsigned char>(byte) & 0x3FU);
    }
    const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    return character < form.minimum || character > 0x10FFFF || isSurrogate ? 0 : form.length;
}

} // namespace

bool isUTF8(std::string_view bytes) noexcept {
    while (!bytes.empty()) {
        const std::size_t length = characterLength(bytes);
        if (length == 0)
            return false;
        bytes.remove_prefix(length);
    }
    return true;
}

bool isMarkedUTF16(std::string_view bytes) noexcept {
    return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
}

std::string_view withoutUTF8Mark(std::string_view bytes) noexcept {
    if (bytes.starts_with("\xEF\xBB\xBF"))
        bytes.remove_prefix(3);
    return bytes;
}

} // namespace vant
