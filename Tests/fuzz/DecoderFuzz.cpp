#include "GNUstep/download/Decoder.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

constexpr std::size_t enough = 16UL * 1024 * 1024;

/// What comes out when the bytes go in in pieces of a size; `isWhole` is false for damage or a cut.
std::string decoded(std::string_view bytes, std::size_t piece, bool &isWhole) {
    vant::ContentDecoder decoder;
    std::string out;
    isWhole = false;
    while (!bytes.empty() && out.size() < enough) {
        decoder.offer(bytes.substr(0, piece));
        bytes.remove_prefix(std::min(piece, bytes.size()));
        while (!decoder.isDrained()) {
            const auto text = decoder.next();
            if (!text)
                return out;
            if (text->size() > 128UL * 1024)
                std::abort();
            out += *text;
        }
    }
    isWhole = decoder.isComplete();
    return out;
}

} // namespace

// However a body is cut into pieces, the same comes out of it, and the same is said of its end.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    bool isWhole = false;
    const std::string all = decoded(bytes, std::max<std::size_t>(size, 1), isWhole);
    for (const std::size_t piece : {1UL, 3UL}) {
        bool isWholeInPieces = false;
        const std::string inPieces = decoded(bytes, piece, isWholeInPieces);
        if (isWholeInPieces != isWhole || (isWhole && inPieces != all))
            std::abort();
    }
    return 0;
}
