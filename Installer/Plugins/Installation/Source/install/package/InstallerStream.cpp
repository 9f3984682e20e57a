#include "install/package/InstallerStream.hpp"

namespace vant {

InstallerStream::~InstallerStream() {
    if (stream_ != nullptr)
        std::fclose(stream_);
}

const char *InstallerStream::nextLine() noexcept {
    return stream_ == nullptr ? nullptr : std::fgets(line_.data(), static_cast<int>(line_.size()), stream_);
}

void InstallerStream::drain() noexcept {
    while (nextLine() != nullptr) {
    }
}

} // namespace vant
