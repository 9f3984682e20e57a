#include "GNUstep/download/Local.hpp"

#include "GNUstep/process/Uninterrupted.hpp"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace vant {

LocalSource::LocalSource(std::string path, Transfer &transfer, const Slice &slice)
    : path_(std::move(path)), transfer_(transfer), slice_(slice) {}

LocalSource::~LocalSource() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

DownloadError LocalSource::open() {
    descriptor_ = uninterrupted([&] { return ::open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC); });
    struct stat file = {};
    if (descriptor_ < 0 || ::fstat(descriptor_, &file) != 0)
        return errorForReading(errno);
    if (!S_ISREG(file.st_mode))
        return S_ISDIR(file.st_mode) ? DownloadError::fileIsFolder : DownloadError::fileDoesNotExist;
    DownloadResponse response;
    response.address = transfer_.request().address;
    response.expectedLength = file.st_size;
    transfer_.receiveResponse(std::move(response));
    return DownloadError::none;
}

DownloadError LocalSource::resume() {
    held_ = false;
    if (descriptor_ < 0)
        if (const auto failure = open(); failure != DownloadError::none)
            return failure;
    std::array<char, 128UL * 1024> bytes; // NOLINT: filled below
    do {
        const auto count = uninterrupted([&] { return ::pread(descriptor_, bytes.data(), bytes.size(), offset_); });
        if (count < 0)
            return DownloadError::noPermissionToRead;
        ended_ = count == 0;
        if (ended_)
            return DownloadError::none;
        switch (transfer_.receive({bytes.data(), static_cast<std::size_t>(count)})) {
        case Transfer::Receipt::accepted:
            offset_ += count;
            break;
        case Transfer::Receipt::paused:
            held_ = true;
            return DownloadError::none;
        case Transfer::Receipt::rejected:
            return DownloadError::unknown;
        }
    } while (!slice_.isOver());
    return DownloadError::none;
}

} // namespace vant
