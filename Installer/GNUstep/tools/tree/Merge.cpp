#include "GNUstep/tools/tree/Merge.hpp"

#include "GNUstep/tools/archive/ExpansionError.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <cerrno>
#include <cstdio>
#include <memory>

namespace vant::tools {

namespace {

constexpr mode_t ownersWrite = 0200;

Descriptor openTop(const std::string &folder) {
    Descriptor top(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!top)
        throw systemError(folder, errno);
    return top;
}

std::vector<std::string> namesIn(const Descriptor &folder) {
    const auto close = [](DIR *open) { ::closedir(open); };
    const std::unique_ptr<DIR, decltype(close)> listing(::fdopendir(::fcntl(folder.get(), F_DUPFD_CLOEXEC, 0)), close);
    std::vector<std::string> names;
    if (!listing)
        throw systemError("a folder", errno);
    ::rewinddir(listing.get());
    while (const dirent *item = ::readdir(listing.get())) {
        const std::string name = item->d_name;
        if (name != "." && name != "..")
            names.push_back(name);
    }
    return names;
}

/// The mode of an item, 0 when there is none.
mode_t modeAt(int folder, const std::string &name) {
    struct stat info {};
    return ::fstatat(folder, name.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0 ? info.st_mode : 0;
}

std::string parentOf(const std::string &path) {
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

std::string nameOf(const std::string &path) {
    return path.substr(path.rfind('/') + 1);
}

} // namespace

Merge::Merge(const std::string &from, const std::string &into, Links links)
    : from_(openTop(from)), into_(openTop(into)), links_(links) {}

Descriptor Merge::folderIn(const Descriptor &top, const std::string &path, Links links) {
    open_how how{};
    how.flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
    how.resolve =
        links == Links::Refused ? RESOLVE_BENEATH | RESOLVE_NO_SYMLINKS : RESOLVE_IN_ROOT | RESOLVE_NO_MAGICLINKS;
    const auto *text = path.empty() ? "." : path.c_str();
    Descriptor folder(static_cast<int>(::syscall(SYS_openat2, top.get(), text, &how, sizeof how)));
    if (!folder)
        throw errno == ENOTDIR || errno == ELOOP || errno == ENOENT
            ? ExpansionError(path + ": not a folder, nothing is written through it")
            : systemError(path, errno);
    return folder;
}

void Merge::run() {
    try {
        mergeFolder("");
    } catch (...) {
        undo();
        throw;
    }
}

void Merge::undo() noexcept {
    for (auto step = steps_.rbegin(); step != steps_.rend(); ++step) {
        try {
            takeBack(*step);
        } catch (const std::exception &) {
            continue; // the rest can still be put back
        }
    }
    steps_.clear();
}

void Merge::mergeFolder(const std::string &path) {
    const auto from = folderIn(from_, path, Links::Refused);
    const auto into = folderIn(into_, path, links_);
    ::fchmod(from.get(), S_IRWXU); // what is left of it will be removed
    const auto prefix = path.empty() ? path : path + '/';
    for (const auto &name : namesIn(from))
        mergeItem(from.get(), into.get(), name, std::string(prefix).append(name));
}

void Merge::mergeItem(int from, int into, const std::string &name, const std::string &path) {
    const auto mode = modeAt(from, name);
    const auto there = modeAt(into, name);
    if (there == 0 || (!S_ISDIR(mode) && !S_ISDIR(there)))
        return move(from, into, name, path, there != 0);
    if (!S_ISDIR(mode))
        throw ExpansionError(path + ": a folder is in the way");
    if (!S_ISDIR(there) && !(S_ISLNK(there) && links_ == Links::FollowedInside))
        throw ExpansionError(path + ": not a folder, nothing is written through it");
    mergeFolder(path);
}

void Merge::move(int from, int into, const std::string &name, const std::string &path, bool replaces) {
    const auto mode = modeAt(from, name);
    const bool isClosed = S_ISDIR(mode) && (mode & ownersWrite) == 0;
    // The system moves no folder that its owner may not write into.
    if (isClosed)
        ::fchmodat(from, name.c_str(), mode | ownersWrite, 0);
    if (::renameat2(from, name.c_str(), into, name.c_str(), replaces ? RENAME_EXCHANGE : 0) == 0)
        steps_.push_back({path, replaces});
    // Some network file systems can't exchange; there the old file can't be put back.
    else if (errno != EINVAL || !replaces || ::renameat(from, name.c_str(), into, name.c_str()) != 0)
        throw systemError(path, errno);
    if (isClosed)
        ::fchmodat(into, name.c_str(), mode, 0);
}

void Merge::takeBack(const Step &step) const {
    const auto from = folderIn(from_, parentOf(step.path), Links::Refused);
    const auto into = folderIn(into_, parentOf(step.path), links_);
    const auto name = nameOf(step.path);
    const auto mode = modeAt(into.get(), name);
    if (S_ISDIR(mode))
        ::fchmodat(into.get(), name.c_str(), mode | S_IRWXU, 0);
    if (::renameat2(into.get(), name.c_str(), from.get(), name.c_str(), step.exchanged ? RENAME_EXCHANGE : 0) != 0)
        throw systemError(step.path, errno);
}

} // namespace vant::tools
