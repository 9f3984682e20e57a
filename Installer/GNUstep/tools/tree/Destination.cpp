#include "GNUstep/tools/tree/Destination.hpp"

#include "GNUstep/tools/archive/ExpansionError.hpp"

#include <fcntl.h>
#include <sys/statvfs.h>

#include <array>
#include <cerrno>
#include <climits>
#include <filesystem>

namespace vant::tools {

namespace {

constexpr mode_t newFolder = 0755;
constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

/// The next folder down. A link here would carry every later entry to wherever it leads.
Descriptor step(int above, const std::string &name, bool create) {
    Descriptor folder(::openat(above, name.c_str(), folderFlags));
    if (!folder && errno == ENOENT && create) {
        if (::mkdirat(above, name.c_str(), newFolder) != 0)
            throw systemError(name, errno);
        folder = Descriptor(::openat(above, name.c_str(), folderFlags));
    }
    if (!folder)
        throw errno == ENOTDIR || errno == ELOOP
            ? ExpansionError(name + ": not a folder, nothing is written through it")
            : systemError(name, errno);
    return folder;
}

/// All components of the path, its name included.
std::vector<std::string> wayTo(const EntryPath &path) {
    auto way = path.folders;
    way.push_back(path.name);
    return way;
}

} // namespace

Destination::Destination(const std::string &folder, mode_t allowed, const EntryPath &below)
    : length_(std::filesystem::absolute(folder).string().size()), allowed_(allowed),
      root_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (!root_)
        throw systemError(folder, errno);
    if (below.name.empty())
        return;
    const auto way = wayTo(below);
    root_ = openFolder(way, true);
    length_ += 1 + below.text().size();
}

Descriptor Destination::openFolder(std::span<const std::string> folders, bool create) const {
    Descriptor at(::fcntl(root_.get(), F_DUPFD_CLOEXEC, 0));
    for (const auto &name : folders)
        at = step(at.get(), name, create);
    return at;
}

int Destination::parentOf(const EntryPath &path) {
    // Neighbours in an archive mostly share a folder. A folder once opened is never removed here, so it stays inside.
    if (!parent_ || parentFolders_ != path.folders) {
        parent_ = openFolder(path.folders, true);
        parentFolders_ = path.folders;
    }
    return parent_.get();
}

void Destination::clearWay(int parent, const EntryPath &path) {
    if (::unlinkat(parent, path.name.c_str(), 0) != 0 && errno != ENOENT)
        throw errno == EISDIR ? ExpansionError(path.text() + ": a folder is in the way")
                              : systemError(path.text(), errno);
}

void Destination::makeFolder(const EntryPath &path, mode_t mode, std::timespec modified) {
    if (path.name.empty())
        return;
    const int parent = parentOf(path);
    if (::mkdirat(parent, path.name.c_str(), newFolder) == 0) {
        made_.push_back({path.text(), mode & allowed_, modified});
        return;
    }
    if (errno != EEXIST)
        throw systemError(path.text(), errno);
    static_cast<void>(step(parent, path.name, false));
}

Descriptor Destination::createFile(const EntryPath &path, mode_t mode) {
    if (path.name.empty())
        throw ExpansionError("the archive holds a file where its folder should be");
    const int parent = parentOf(path);
    const auto create = [&] {
        return Descriptor(
            ::openat(parent, path.name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    };
    auto file = create();
    if (!file && errno == EEXIST) {
        // Unlinked rather than truncated: the earlier file may have a second name.
        clearWay(parent, path);
        file = create();
    }
    // Set-id bits are dropped: the files belong to whoever unpacks, not to the owner that the archive names.
    if (!file || ::fchmod(file.get(), mode & allowed_) != 0)
        throw systemError(path.text(), errno);
    return file;
}

void Destination::makeLink(const EntryPath &path, const std::string &target) {
    if (path.name.empty() || target.empty())
        throw ExpansionError(path.text() + ": refused, a link that leads nowhere or stands where its folder should be");
    const int parent = parentOf(path);
    clearWay(parent, path);
    if (::symlinkat(target.c_str(), parent, path.name.c_str()) != 0)
        throw systemError(path.text(), errno);
}

void Destination::makeHardLink(const EntryPath &path, const EntryPath &existing) {
    const bool isNeighbour = parent_ && existing.folders == parentFolders_;
    const auto folder =
        isNeighbour ? Descriptor(::fcntl(parent_.get(), F_DUPFD_CLOEXEC, 0)) : openFolder(existing.folders, false);
    struct stat info {};
    if (::fstatat(folder.get(), existing.name.c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0)
        throw systemError(existing.text(), errno);
    // A second name of a relative link would lead to another place than the first.
    if (!S_ISREG(info.st_mode))
        throw ExpansionError(path.text() + ": refused, a hard link to something that is no file");
    if (path.text() == existing.text())
        return;
    const int parent = parentOf(path);
    clearWay(parent, path);
    if (::linkat(folder.get(), existing.name.c_str(), parent, path.name.c_str(), 0) != 0)
        throw systemError(path.text(), errno);
}

void Destination::finish() {
    // Last made first: a parent that ends up closed to writing must not keep its children from their modes.
    for (; !made_.empty(); made_.pop_back()) {
        const auto &folder = made_.back();
        const auto open = openFolder(wayTo(*safeEntryPath(folder.path)), false);
        if (::fchmod(open.get(), folder.mode) != 0 || !setModified(open.get(), folder.modified))
            throw systemError(folder.path, errno);
    }
}

std::uint64_t Destination::freeBytes() const {
    struct statvfs volume {};
    if (::fstatvfs(root_.get(), &volume) != 0)
        throw systemError("the volume", errno);
    return std::uint64_t{volume.f_bavail} * volume.f_frsize;
}

bool Destination::hasRoomFor(const EntryPath &path) const {
    return length_ + 1 + path.text().size() < PATH_MAX;
}

bool setModified(int file, std::timespec modified) {
    const std::array times{std::timespec{.tv_sec = 0, .tv_nsec = UTIME_OMIT}, modified};
    return ::futimens(file, times.data()) == 0;
}

void writeAt(int file, std::span<const char> bytes, std::int64_t offset, const std::string &name) {
    while (!bytes.empty()) {
        const auto count = ::pwrite(file, bytes.data(), bytes.size(), offset);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw systemError(name, errno);
        bytes = bytes.subspan(static_cast<std::size_t>(count));
        offset += count;
    }
}

} // namespace vant::tools
