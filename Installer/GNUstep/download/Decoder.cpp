#include "GNUstep/download/Decoder.hpp"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <zlib.h>

namespace vant {
namespace {

constexpr int gzipOrZlib = 32 + MAX_WBITS;
constexpr int bareDeflate = -MAX_WBITS;

} // namespace

struct ContentDecoder::Stream {
    z_stream state{};
    std::string input;
    std::array<char, 128UL * 1024> output{};
    bool drained = true;
    bool started = false;
    bool ended = false;

    void rewind() noexcept {
        state.next_in = reinterpret_cast<Bytef *>(input.data());
        state.avail_in = static_cast<uInt>(input.size());
    }

    /// Streams may follow one another. What isn't one is padding, which readers of gzip ignore: false.
    bool beginNext() noexcept {
        constexpr Bytef firstOfGzip = 0x1f;
        if (state.avail_in == 0 || *state.next_in != firstOfGzip)
            return false;
        inflateReset(&state);
        ended = false;
        return true;
    }

    /// Fills the output buffer; false for damage.
    bool step() noexcept {
        state.next_out = reinterpret_cast<Bytef *>(output.data());
        state.avail_out = static_cast<uInt>(output.size());
        int status = inflate(&state, Z_NO_FLUSH);
        if (status == Z_DATA_ERROR && !started) {
            // "deflate" means zlib's wrapping, yet half of the servers send the bare stream.
            inflateReset2(&state, bareDeflate);
            rewind();
            status = inflate(&state, Z_NO_FLUSH);
        }
        started = true;
        ended = status == Z_STREAM_END;
        drained = state.avail_in == 0 && state.avail_out > 0;
        return status == Z_OK || status == Z_STREAM_END || status == Z_BUF_ERROR;
    }
};

bool ContentDecoder::isSupported(std::string_view encoding) {
    std::string name(encoding);
    std::ranges::transform(name, name.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name == "gzip" || name == "x-gzip" || name == "deflate";
}

ContentDecoder::ContentDecoder() : stream_(std::make_unique<Stream>()) {
    inflateInit2(&stream_->state, gzipOrZlib);
}

ContentDecoder::~ContentDecoder() {
    inflateEnd(&stream_->state);
}

void ContentDecoder::offer(std::string_view bytes) {
    stream_->input = bytes;
    stream_->rewind();
    stream_->drained = bytes.empty();
}

bool ContentDecoder::isDrained() const noexcept {
    return stream_->drained;
}

std::optional<std::string_view> ContentDecoder::next() {
    auto &stream = *stream_;
    if (stream.drained)
        return std::string_view{};
    if (stream.ended && !stream.beginNext()) {
        stream.drained = true;
        return std::string_view{};
    }
    if (!stream.step())
        return std::nullopt;
    return std::string_view(stream.output.data(), stream.output.size() - stream.state.avail_out);
}

bool ContentDecoder::isComplete() const noexcept {
    return !stream_->started || stream_->ended;
}

} // namespace vant
