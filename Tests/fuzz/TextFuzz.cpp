#include "base/PropertyListCheck.hpp"
#include "base/TextBytes.hpp"
#include "slides/SlideText.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

void require(bool holds) {
    if (!holds)
        std::abort();
}

/// How many bytes of the text the character at its head takes, 0 for none that is sound. By the ranges of its number.
std::size_t characterLength(std::string_view text) {
    constexpr std::array<std::uint32_t, 4> least{0, 0x80, 0x800, 0x10000};
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const std::size_t length = byte(0) < 0x80 ? 1 : byte(0) >= 0xf0 ? 4 : byte(0) >= 0xe0 ? 3 : 2;
    std::uint32_t number = length == 1 ? byte(0) : byte(0) & (0xffU >> (length + 1));
    if (text.size() < length || (length > 1 && byte(0) < 0xc0) || byte(0) > 0xf7)
        return 0;
    for (std::size_t at = 1; at < length; ++at) {
        if ((byte(at) & 0xc0U) != 0x80)
            return 0;
        number = number << 6U | (byte(at) & 0x3fU);
    }
    const bool isSurrogate = number >= 0xd800 && number <= 0xdfff;
    return number < least.at(length - 1) || number > 0x10ffff || isSurrogate ? 0 : length;
}

void checkEncoding(std::string_view bytes) {
    bool isSound = true;
    for (std::string_view rest = bytes; isSound && !rest.empty();) {
        const std::size_t length = characterLength(rest);
        isSound = length != 0;
        rest.remove_prefix(length);
    }
    require(vant::isUTF8(bytes) == isSound);
    require(bytes.ends_with(vant::withoutUTF8Mark(bytes)));
}

void checkElement(std::string_view content, std::string_view opening, std::string_view closing) {
    const std::string_view found = vant::textBetween(content, opening, closing);
    require(found.find(opening) == std::string_view::npos && found.find(closing) == std::string_view::npos);
    require(found.empty() ||
            (found.data() >= content.data() && found.data() + found.size() <= content.data() + content.size()));
}

void checkVendor(std::string_view text) {
    constexpr std::string_view placeholder = "__MFG__";
    const std::string removed = vant::withVendorName(text, "");
    const std::size_t places = (text.size() - removed.size()) / placeholder.size();
    require(vant::withVendorName(text, placeholder) == text);
    require(vant::withVendorName(text, "x").size() == removed.size() + places);
}

/// A table of strings is a property list without its braces: what is taken for safe nests no deeper than allowed.
void checkTable(std::string_view bytes) {
    const bool isNarrow = !vant::isMarkedUTF16(bytes) && bytes.find('\0') == std::string_view::npos;
    if (!isNarrow || bytes.starts_with("bplist") || !vant::isPropertyListSafeToParse(bytes))
        return;
    bytes = vant::withoutUTF8Mark(bytes);
    require(std::min(vant::bracketNesting(bytes), vant::markupNesting(bytes)) <= vant::deepestPropertyList);
}

} // namespace

// Any bytes are a slide's "string.xml" or a table of strings, or no text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    checkEncoding(bytes);
    checkElement(bytes, "<TITLE>", "</TITLE>");
    checkElement(bytes, "<MESSAGE>", "</MESSAGE>");
    checkVendor(bytes);
    checkTable(bytes);
    return 0;
}
