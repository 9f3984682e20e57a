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
    std::array<char, 128UL * 1024> output{};
    bool started = false;
    bool ended = false;

    void offer(std::string_view bytes) noexcept {
        // zlib's interface predates const; it does not write to its input.
        state.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.data()));
        state.avail_in = static_cast<uInt>(bytes.size());
    }

    /// Streams may follow one another. What is no stream is padding, which readers of gzip ignore: false.
    bool beginNext() noexcept {
        constexpr Bytef firstOfGzip = 0x1f;
        if (state.avail_in == 0 || *state.next_in != firstOfGzip)
            return false;
        inflateReset(&state);
        ended = false;
        return true;
    }

    /// Decodes into the buffer; false for damage. Gives what there is in `count`.
    bool step(std::string_view all, std::size_t &count) noexcept {
        state.next_out = reinterpret_cast<Bytef *>(output.data());
        state.avail_out = static_cast<uInt>(output.size());
        int status = inflate(&state, Z_NO_FLUSH);
        if (status == Z_DATA_ERROR && !started) {
            // "deflate" means zlib's wrapping, yet half of the servers send the bare stream.
            inflateReset2(&state, bareDeflate);
            offer(all);
            status = inflate(&state, Z_NO_FLUSH);
        }
        started = true;
        ended = status == Z_STREAM_END;
        count = output.size() - state.avail_out;
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

ContentDecoder::Result ContentDecoder::decode(std::string_view bytes, const Sink &sink) {
    auto &stream = *stream_;
    stream.offer(bytes);
    for (bool more = !bytes.empty(); more;) {
        if (stream.ended && !stream.beginNext())
            return Result::taken;
        std::size_t count = 0;
        if (!stream.step(bytes, count))
            return Result::damaged;
        if (count > 0 && !sink({stream.output.data(), count}))
            return Result::stopped;
        more = stream.state.avail_in > 0 || stream.state.avail_out == 0;
    }
    return Result::taken;
}

bool ContentDecoder::complete() const noexcept {
    return !stream_->started || stream_->ended;
}

} // namespace vant
