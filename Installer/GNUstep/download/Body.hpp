#pragma once
#include "GNUstep/download/Decoder.hpp"
#include "GNUstep/download/File.hpp"
#include "GNUstep/download/Slice.hpp"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace vant {

/// The free space that a decoded body leaves on a volume with `freeSpace` bytes left: a tenth, at most 256 MiB. A small
/// encoded body can be of any size when decoded.
[[nodiscard]] std::uint64_t reservedSpace(std::uint64_t freeSpace) noexcept;

/// The body of a response on its way into the file: decoded if the server encoded it, for one slice at a time.
class Body {
public:
    /// `slice` must outlive the body; it bounds the work of each call.
    explicit Body(const Slice &slice) : slice_(slice) {}

    /// Names the Content-Encoding, before the file is created. An unknown one is left as it is.
    void setEncoding(std::string_view encoding);

    /// Creates the file, once.
    [[nodiscard]] DownloadError create(const std::string &path, Existing existing);

    /// Takes the next bytes, unless it is decoding earlier ones.
    [[nodiscard]] DownloadError receive(std::string_view bytes);
    /// True when received bytes are still to be decoded.
    [[nodiscard]] bool isDecoding() const noexcept { return decoder_ != nullptr && !decoder_->isDrained(); }
    /// Decodes on until the slice's end.
    [[nodiscard]] DownloadError decode();
    /// `cannotDecode` when the body was cut in the middle of its encoding.
    [[nodiscard]] DownloadError checkEnd() const noexcept;

    /// True when bytes were written since `takeUnreported`.
    [[nodiscard]] bool hasUnreported() const noexcept { return unreported_ > 0; }
    [[nodiscard]] std::size_t takeUnreported() noexcept { return std::exchange(unreported_, 0); }

    [[nodiscard]] DownloadFile &file() noexcept { return file_; }
    [[nodiscard]] const DownloadFile &file() const noexcept { return file_; }

private:
    [[nodiscard]] DownloadError write(std::string_view bytes);

    const Slice &slice_;
    std::unique_ptr<ContentDecoder> decoder_;
    DownloadFile file_;
    std::uint64_t reserved_ = 0;
    std::size_t unreported_ = 0;
};

} // namespace vant
