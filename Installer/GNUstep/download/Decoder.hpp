#pragma once
#include <functional>
#include <memory>
#include <string_view>

namespace vant {

/// Undoes a server's content encoding, piece by piece, with a fixed amount of memory whatever the ratio.
class ContentDecoder {
public:
    /// Takes decoded bytes, false to stop.
    using Sink = std::function<bool(std::string_view)>;
    enum class Result { taken, damaged, stopped };

    /// True for the names of Content-Encoding that it understands ("gzip", "x-gzip", "deflate", any case).
    [[nodiscard]] static bool isSupported(std::string_view encoding);

    ContentDecoder();
    ~ContentDecoder();
    ContentDecoder(const ContentDecoder &) = delete;
    ContentDecoder &operator=(const ContentDecoder &) = delete;

    /// Decodes the next bytes of the body into the sink.
    [[nodiscard]] Result decode(std::string_view bytes, const Sink &sink);

    /// False when the body ended in the middle of the stream; an empty body is complete.
    [[nodiscard]] bool complete() const noexcept;

private:
    struct Stream;
    std::unique_ptr<Stream> stream_;
};

} // namespace vant
