#pragma once
#include <memory>
#include <optional>
#include <string_view>

namespace vant {

/// Undoes a server's content encoding in pieces of bounded size, with a fixed amount of memory whatever the ratio, so
/// that the caller can stop between two of them.
class ContentDecoder {
public:
    /// True for the values of Content-Encoding that it understands ("gzip", "x-gzip", "deflate", any case).
    [[nodiscard]] static bool isSupported(std::string_view encoding);

    ContentDecoder();
    ~ContentDecoder();
    ContentDecoder(const ContentDecoder &) = delete;
    ContentDecoder &operator=(const ContentDecoder &) = delete;

    /// Copies the next bytes of the body. Only while `isDrained`.
    void offer(std::string_view bytes);

    /// True when all that was offered has been decoded and taken.
    [[nodiscard]] bool isDrained() const noexcept;

    /// The next decoded bytes, at most 128 KiB and possibly none, valid until the next call. Nothing for a damaged
    /// body.
    [[nodiscard]] std::optional<std::string_view> next();

    /// False when the body ended in the middle of the stream; an empty body is complete.
    [[nodiscard]] bool isComplete() const noexcept;

private:
    struct Stream;
    std::unique_ptr<Stream> stream_;
};

} // namespace vant
