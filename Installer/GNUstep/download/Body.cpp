#include "GNUstep/download/Body.hpp"

#include <algorithm>

namespace vant {

std::uint64_t reservedSpace(std::uint64_t freeSpace) noexcept {
    constexpr std::uint64_t most = 256ULL * 1024 * 1024;
    return std::min(freeSpace / 10, most);
}

void Body::setEncoding(std::string_view encoding) {
    if (ContentDecoder::isSupported(encoding))
        decoder_ = std::make_unique<ContentDecoder>();
}

DownloadError Body::create(const std::string &path, Existing existing) {
    const auto failure = file_.create(path, existing);
    if (failure == DownloadError::none && decoder_)
        reserved_ = reservedSpace(file_.freeSpace());
    return failure;
}

DownloadError Body::receive(std::string_view bytes) {
    if (!decoder_)
        return write(bytes);
    decoder_->offer(bytes);
    return decode();
}

DownloadError Body::decode() {
    while (isDecoding() && !slice_.isOver()) {
        const auto bytes = decoder_->next();
        if (!bytes)
            return DownloadError::cannotDecode;
        if (const auto failure = write(*bytes); failure != DownloadError::none)
            return failure;
    }
    return DownloadError::none;
}

DownloadError Body::checkEnd() const noexcept {
    return decoder_ && !decoder_->isComplete() ? DownloadError::cannotDecode : DownloadError::none;
}

DownloadError Body::write(std::string_view bytes) {
    if (reserved_ > 0 && file_.freeSpace() < reserved_ + bytes.size())
        return DownloadError::cannotWriteFile;
    const auto failure = file_.write(bytes);
    if (failure == DownloadError::none)
        unreported_ += bytes.size();
    return failure;
}

} // namespace vant
