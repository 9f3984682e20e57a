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

// However a body that begins as gzip is cut into pieces, the same comes out of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    bool isWhole = false;
    const std::string all = decoded(bytes, std::max<std::size_t>(size, 1), isWhole);
    const bool isGzip = bytes.starts_with("\x1f\x8b\x08");
    bool isWholeInPieces = false;
    const std::string inPieces = decoded(bytes, 3, isWholeInPieces);
    if (isGzip && isWhole && (!isWholeInPieces || inPieces != all))
        std::abort();
    return 0;
}
