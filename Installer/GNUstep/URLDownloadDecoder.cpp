#include "URLDownloadDecoder.hpp"

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
};

bool ContentDecoder::knows(std::string_view encoding) {
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
    z_stream &z = stream_->state;
    // zlib's interface predates const; it does not write to its input.
    z.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.data()));
    z.avail_in = static_cast<uInt>(bytes.size());
    bool more = !bytes.empty();
    while (more) {
        if (stream_->ended) {
            // Streams may follow one another; what is no stream is padding, which readers of gzip ignore.
            if (z.avail_in == 0 || *z.next_in != 0x1f)
                return Result::taken;
            inflateReset(&z);
            stream_->ended = false;
        }
        z.next_out = reinterpret_cast<Bytef *>(stream_->output.data());
        z.avail_out = static_cast<uInt>(stream_->output.size());
        int status = inflate(&z, Z_NO_FLUSH);
        if (status == Z_DATA_ERROR && !stream_->started && z.total_in <= 2) {
            // "deflate" means zlib's wrapping, yet half of the servers send the bare stream.
            inflateReset2(&z, bareDeflate);
            z.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.data()));
            z.avail_in = static_cast<uInt>(bytes.size());
            status = inflate(&z, Z_NO_FLUSH);
        }
        if (status != Z_OK && status != Z_STREAM_END && status != Z_BUF_ERROR)
            return Result::damaged;
        stream_->started = true;
        stream_->ended = status == Z_STREAM_END;
        const auto count = stream_->output.size() - z.avail_out;
        if (count > 0 && !sink({stream_->output.data(), count}))
            return Result::stopped;
        more = z.avail_in > 0 || z.avail_out == 0;
    }
    return Result::taken;
}

bool ContentDecoder::complete() const noexcept {
    return !stream_->started || stream_->ended;
}

} // namespace vant
