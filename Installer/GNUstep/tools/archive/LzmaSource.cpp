#include "GNUstep/tools/archive/LzmaSource.hpp"

#include "GNUstep/tools/archive/ExpansionError.hpp"

#include <lzma.h>

#include <new>

namespace vant::tools {

struct LzmaSource::State {
    lzma_stream stream = LZMA_STREAM_INIT;
    bool atEnd = false;
};

namespace {

constexpr std::uint64_t memoryLimit = std::uint64_t{34} << 20;
constexpr std::string_view xzMagic{"\xFD"
                                   "7zXZ\0",
                                   6};
/// Properties as every writer sets them, and the two bytes of the dictionary's size that are zero in all usual sizes.
constexpr std::string_view lzmaMagic{"\x5D\0\0", 3};

void check(lzma_ret result) {
    switch (result) {
    case LZMA_OK:
    case LZMA_STREAM_END:
        return;
    case LZMA_BUF_ERROR:
        throw ExpansionError("the compressed data ends too early");
    case LZMA_MEM_ERROR:
    case LZMA_MEMLIMIT_ERROR:
        throw ExpansionError("the compressed data needs too much memory to decompress");
    default:
        throw ExpansionError("the compressed data is damaged");
    }
}

} // namespace

LzmaSource::LzmaSource(ByteSource &compressed) : compressed_(compressed), state_(std::make_unique<State>()) {
    if (lzma_auto_decoder(&state_->stream, memoryLimit, LZMA_CONCATENATED) != LZMA_OK)
        throw std::bad_alloc();
}

LzmaSource::~LzmaSource() {
    lzma_end(&state_->stream);
}

bool LzmaSource::isLzma(ByteSource &source) {
    const auto magic = source.magic();
    return magic == xzMagic || magic.starts_with(lzmaMagic);
}

std::size_t LzmaSource::fill(std::span<char> buffer) {
    auto &stream = state_->stream;
    stream.next_out = reinterpret_cast<std::uint8_t *>(buffer.data());
    stream.avail_out = buffer.size();
    while (!state_->atEnd && stream.avail_out == buffer.size()) {
        if (stream.avail_in == 0) {
            const auto bytes = compressed_.next();
            stream.next_in = reinterpret_cast<const std::uint8_t *>(bytes.data());
            stream.avail_in = bytes.size();
        }
        const auto result = lzma_code(&stream, stream.avail_in == 0 ? LZMA_FINISH : LZMA_RUN);
        check(result);
        state_->atEnd = result == LZMA_STREAM_END;
    }
    return buffer.size() - stream.avail_out;
}

} // namespace vant::tools
