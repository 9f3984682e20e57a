#include "GNUstep/download/Decoder.hpp"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <zlib.h>

namespace vant {
namespace {

constexpr std::string_view gzipMark = "\x1f\x8b";

/// What zlib calls the window bits of each.
enum class Wrapping { Bare = -MAX_WBITS, Zlib = MAX_WBITS, Gzip = 16 + MAX_WBITS };

/// "deflate" means zlib's wrapping, yet half of the servers send the bare stream. The first two bytes tell: no encoder
/// begins a bare stream as zlib's header does.
Wrapping wrappingOf(std::string_view head) noexcept {
    if (head == gzipMark)
        return Wrapping::Gzip;
    const auto method = static_cast<unsigned char>(head[0]);
    const auto flags = static_cast<unsigned char>(head[1]);
    const bool isZlib = (method & 0x0fU) == Z_DEFLATED && (method * 256U + flags) % 31 == 0;
    return isZlib ? Wrapping::Zlib : Wrapping::Bare;
}

} // namespace

struct ContentDecoder::Stream {
    z_stream state{};
    std::string input;
    std::array<char, 128UL * 1024> output{};
    std::optional<Wrapping> wrapping;
    bool drained = true;
    bool ended = false;
    bool padded = false;

    /// The first byte waits for the second one.
    void offer(std::string_view bytes) {
        if (!wrapping)
            input += bytes;
        else
            input = bytes;
        drained = input.size() < gzipMark.size() && !wrapping;
        state.next_in = reinterpret_cast<Bytef *>(input.data());
        state.avail_in = static_cast<uInt>(input.size());
    }

    /// Fills the output buffer, if there is more to come; false for damage.
    bool step() noexcept {
        state.next_out = reinterpret_cast<Bytef *>(output.data());
        state.avail_out = static_cast<uInt>(output.size());
        begin();
        if (ended) {
            drained = true;
            return true;
        }
        const int status = inflate(&state, Z_NO_FLUSH);
        ended = status == Z_STREAM_END;
        drained = state.avail_in == 0 && state.avail_out > 0;
        return status == Z_OK || status == Z_STREAM_END || status == Z_BUF_ERROR;
    }

private:
    /// At the body's first stream, and at one of gzip behind another. What follows otherwise is padding, to the body's
    /// end, which readers of gzip ignore.
    void begin() noexcept {
        if (!wrapping) {
            wrapping = wrappingOf(std::string_view(input).substr(0, gzipMark.size()));
            inflateReset2(&state, static_cast<int>(*wrapping));
        } else if (ended && state.avail_in > 0) {
            padded = padded || *wrapping != Wrapping::Gzip || static_cast<char>(*state.next_in) != gzipMark[0];
            ended = padded;
            inflateReset(&state);
        }
    }
};

bool ContentDecoder::isSupported(std::string_view encoding) {
    std::string name(encoding);
    std::ranges::transform(name, name.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name == "gzip" || name == "x-gzip" || name == "deflate";
}

ContentDecoder::ContentDecoder() : stream_(std::make_unique<Stream>()) {
    inflateInit2(&stream_->state, MAX_WBITS);
}

ContentDecoder::~ContentDecoder() {
    inflateEnd(&stream_->state);
}

void ContentDecoder::offer(std::string_view bytes) {
    stream_->offer(bytes);
}

bool ContentDecoder::isDrained() const noexcept {
    return stream_->drained;
}

std::optional<std::string_view> ContentDecoder::next() {
    auto &stream = *stream_;
    if (stream.drained)
        return std::string_view{};
    if (!stream.step())
        return std::nullopt;
    return std::string_view(stream.output.data(), stream.output.size() - stream.state.avail_out);
}

bool ContentDecoder::isComplete() const noexcept {
    return stream_->ended || (!stream_->wrapping && stream_->input.empty());
}

} // namespace vant
