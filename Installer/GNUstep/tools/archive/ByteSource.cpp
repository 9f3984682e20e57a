#include "GNUstep/tools/archive/ByteSource.hpp"

#include "GNUstep/tools/archive/ExpansionError.hpp"

#include <archive.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

namespace vant::tools {

namespace {

constexpr std::size_t magicLength = 6;

} // namespace

std::span<const char> ByteSource::next() {
    const std::size_t ready = ahead_ > 0 ? std::exchange(ahead_, 0) : fill(buffer_);
    taken_ += ready;
    return std::span(buffer_).first(ready);
}

std::string ByteSource::magic() {
    while (ahead_ < magicLength) {
        const auto more = fill(std::span(buffer_).subspan(ahead_));
        if (more == 0)
            break;
        ahead_ += more;
    }
    return {buffer_.data(), std::min(ahead_, magicLength)};
}

void ByteSource::drain() {
    while (!next().empty()) {
    }
}

Descriptor openRegularFile(const std::string &path, std::uint64_t &size) {
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat info {};
    if (!file || ::fstat(file.get(), &info) != 0)
        throw systemError(path, errno);
    if (!S_ISREG(info.st_mode))
        throw ExpansionError(path + ": not a regular file");
    size = static_cast<std::uint64_t>(info.st_size);
    return file;
}

FileSource::FileSource(const std::string &path) : path_(path), file_(openRegularFile(path, size_)) {}

std::size_t FileSource::fill(std::span<char> buffer) {
    ssize_t count = 0;
    do
        count = ::read(file_.get(), buffer.data(), buffer.size());
    while (count < 0 && errno == EINTR);
    if (count < 0)
        throw systemError(path_, errno);
    return static_cast<std::size_t>(count);
}

std::size_t EntrySource::fill(std::span<char> buffer) {
    const auto count = archive_read_data(outer_, buffer.data(), buffer.size());
    if (count < 0)
        throw ExpansionError(archive_error_string(outer_) != nullptr ? archive_error_string(outer_) : "damaged entry");
    return static_cast<std::size_t>(count);
}

} // namespace vant::tools
