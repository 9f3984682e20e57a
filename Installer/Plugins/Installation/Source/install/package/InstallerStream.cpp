#include "install/package/InstallerStream.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace vant {

InstallerStream::~InstallerStream() {
    if (stream_ != nullptr)
        std::fclose(stream_);
}

bool InstallerStream::refill() noexcept {
    if (stream_ == nullptr)
        return false;
    ssize_t count = 0;
    do {
        count = ::read(::fileno(stream_), read_.data(), read_.size());
    } while (count < 0 && errno == EINTR);
    next_ = 0;
    end_ = count > 0 ? static_cast<std::size_t>(count) : 0;
    return end_ > 0;
}

const char *InstallerStream::nextLine() noexcept {
    std::size_t length = 0;
    bool ended = false;
    while (!ended && length < line_.size() - 1 && (next_ < end_ || refill())) {
        const char *from = read_.data() + next_;
        std::size_t taken = std::min(end_ - next_, line_.size() - 1 - length);
        if (const void *lineFeed = std::memchr(from, '\n', taken); lineFeed != nullptr) {
            taken = static_cast<std::size_t>(static_cast<const char *>(lineFeed) - from) + 1;
            ended = true;
        }
        std::memcpy(line_.data() + length, from, taken);
        length += taken;
        next_ += taken;
    }
    line_.at(length) = '\0';
    return length == 0 ? nullptr : line_.data();
}

void InstallerStream::drain() noexcept {
    while (refill()) {
    }
    next_ = end_;
}

} // namespace vant
