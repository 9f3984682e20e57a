#include "base/PropertyListCheck.hpp"

#include <cstdint>
#include <cstdlib>

// What the checks let through must itself hold: a list that is safe to parse nests no deeper than allowed, by the
// measure of its own kind.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    const std::size_t markup = vant::markupNesting(bytes);
    const std::size_t brackets = vant::bracketNesting(bytes);
    if (markup > size || brackets > size)
        std::abort();
    const bool isBinary = bytes.starts_with("bplist");
    // Whatever the first bytes are, so that the fuzzer reaches the objects without having to guess them.
    const bool isSound = vant::isBinaryPropertyListSound(bytes);
    if (isBinary && vant::isPropertyListSafeToParse(bytes) != isSound)
        std::abort();
    if (!isBinary && vant::isPropertyListSafeToParse(bytes) && bytes.find('\0') == std::string_view::npos &&
        markup > vant::deepestPropertyList && brackets > vant::deepestPropertyList)
        std::abort();
    return 0;
}
