#include "Gzip.hpp"

#include <zlib.h>

namespace vant::test {

std::string packed(std::string_view text, Wrapping wrapping) {
    z_stream stream{};
    const int bits = wrapping == Wrapping::gzip ? MAX_WBITS + 16 : wrapping == Wrapping::zlib ? MAX_WBITS : -MAX_WBITS;
    deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, bits, 8, Z_DEFAULT_STRATEGY);
    std::string result(deflateBound(&stream, text.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef *>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    deflate(&stream, Z_FINISH);
    result.resize(stream.total_out);
    deflateEnd(&stream);
    return result;
}

} // namespace vant::test
