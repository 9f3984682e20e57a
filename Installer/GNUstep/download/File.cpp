#include "GNUstep/download/File.hpp"

#include "GNUstep/download/Names.hpp"
#include "GNUstep/process/Uninterrupted.hpp"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>
#include <utility>

namespace vant {
namespace {

constexpr std::size_t maxNumberedNames = 10'000;

/// A new file of that name, or -1: whatever stands there, a link included, is never written through.
int makeNew(const std::string &path) noexcept {
    return uninterrupted([&] { return ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666); });
}

/// The existing file, emptied: for a folder in which nothing can be removed but the file itself may be written.
int reuse(const std::string &path) noexcept {
    constexpr int flags = O_WRONLY | O_TRUNC | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    return uninterrupted([&] { return ::open(path.c_str(), flags); });
}

/// A new file in the place of an existing one. The old one is unlinked, not emptied: who has it open keeps reading it.
int replace(const std::string &path) noexcept {
    if (::unlink(path.c_str()) == 0 || errno == ENOENT)
        return makeNew(path);
    return reuse(path);
}

int makeNumbered(const std::string &path, std::string &used) {
    int descriptor = makeNew(used = path);
    for (std::size_t number = 1; descriptor < 0 && errno == EEXIST && number <= maxNumberedNames; ++number)
        descriptor = makeNew(used = numberedPath(path, number));
    return descriptor;
}

} // namespace

DownloadFile::~DownloadFile() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

DownloadError DownloadFile::create(const std::string &path, Existing existing) {
    struct stat before = {};
    const bool exists = ::lstat(path.c_str(), &before) == 0;
    if (exists && S_ISDIR(before.st_mode) && existing == Existing::replace)
        return DownloadError::cannotCreateFile;
    std::string used = path;
    descriptor_ = existing == Existing::replace ? replace(path) : makeNumbered(path, used);
    struct stat made = {};
    if (descriptor_ < 0 || ::fstat(descriptor_, &made) != 0)
        return errorForOpening(errno, exists && existing == Existing::replace);
    device_ = made.st_dev;
    inode_ = made.st_ino;
    path_ = std::move(used);
    return DownloadError::none;
}

DownloadError DownloadFile::write(std::string_view bytes) noexcept {
    while (!bytes.empty()) {
        const auto count = uninterrupted([&] { return ::write(descriptor_, bytes.data(), bytes.size()); });
        if (count <= 0)
            return DownloadError::cannotWriteFile;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return DownloadError::none;
}

std::uint64_t DownloadFile::freeSpace() const noexcept {
    struct statvfs volume = {};
    if (::fstatvfs(descriptor_, &volume) != 0)
        return 0;
    return std::uint64_t{volume.f_bavail} * volume.f_frsize;
}

DownloadError DownloadFile::close() noexcept {
    const int descriptor = std::exchange(descriptor_, -1);
    if (descriptor < 0 || ::close(descriptor) == 0)
        return DownloadError::none;
    return errno == ENOSPC || errno == EDQUOT ? DownloadError::cannotWriteFile : DownloadError::cannotCloseFile;
}

void DownloadFile::remove() noexcept {
    (void)close();
    struct stat now = {};
    if (path_.empty() || ::lstat(path_.c_str(), &now) != 0)
        return;
    if (now.st_dev == device_ && now.st_ino == inode_)
        ::unlink(path_.c_str());
}

} // namespace vant
