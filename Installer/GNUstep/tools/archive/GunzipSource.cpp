#include "GNUstep/tools/archive/GunzipSource.hpp"

#include "GNUstep/tools/archive/ExpansionError.hpp"

#include <zlib.h>

#include <new>

namespace vant::tools {

struct GunzipSource::State {
    z_stream stream{};
    bool inMember = true; ///< false between two members and behind the last one
};

namespace {

constexpr int gzipWindow = 16 + MAX_WBITS;
constexpr std::string_view gzipMagic = "\x1f\x8b";

} // namespace

GunzipSource::GunzipSource(ByteSource &compressed) : compressed_(compressed), state_(std::make_unique<State>()) {
    if (inflateInit2(&state_->stream, gzipWindow) != Z_OK)
        throw std::bad_alloc();
}

GunzipSource::~GunzipSource() {
    inflateEnd(&state_->stream);
}

bool GunzipSource::isGzip(ByteSource &source) {
    return source.magic().starts_with(gzipMagic);
}

bool GunzipSource::refill() {
    const auto bytes = compressed_.next();
    // zlib's interface predates const; it does not write to its input.
    state_->stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.data()));
    state_->stream.avail_in = static_cast<uInt>(bytes.size());
    return !bytes.empty();
}

bool GunzipSource::nextMember() {
    auto &stream = state_->stream;
    if ((stream.avail_in == 0 && !refill()) || *stream.next_in != static_cast<Bytef>(gzipMagic.front()))
        return false;
    inflateReset(&stream);
    return true;
}

std::size_t GunzipSource::fill(std::span<char> buffer) {
    auto &stream = state_->stream;
    stream.next_out = reinterpret_cast<Bytef *>(buffer.data());
    stream.avail_out = static_cast<uInt>(buffer.size());
    while (stream.avail_out == buffer.size()) {
        if (!state_->inMember && !nextMember())
            break;
        if (stream.avail_in == 0 && !refill())
            throw ExpansionError("the compressed data ends too early");
        const int result = inflate(&stream, Z_NO_FLUSH);
        if (result != Z_OK && result != Z_STREAM_END)
            throw ExpansionError("the compressed data is damaged");
        state_->inMember = result == Z_OK;
    }
    return buffer.size() - stream.avail_out;
}

} // namespace vant::tools
