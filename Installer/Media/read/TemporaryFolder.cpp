#include "read/TemporaryFolder.hpp"

#include "GNUstep/process/Uninterrupted.hpp"
#include "GNUstep/tools/tree/Removal.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace vant::media {
namespace {

namespace fs = std::filesystem;

const std::string namesBegin = "vantmedia-run.";
constexpr mode_t madeFor = S_IFDIR | S_IRWXU;

Descriptor opened(const std::string &folder) {
    return Descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

bool isLocked(const Descriptor &folder, int more = 0) {
    return uninterrupted([&] { return ::flock(folder.get(), LOCK_EX | more); }) == 0;
}

/// Whether the open folder still stands at the path, and is one that a run of this user has made.
bool isOwnAt(const Descriptor &folder, const std::string &path) {
    struct stat open {};
    struct stat now {};
    return ::fstat(folder.get(), &open) == 0 && ::lstat(path.c_str(), &now) == 0 && open.st_dev == now.st_dev &&
           open.st_ino == now.st_ino && open.st_uid == ::geteuid() && open.st_mode == madeFor;
}

void removeWhenAbandoned(const std::string &path) {
    const Descriptor folder = opened(path);
    if (folder && isLocked(folder, LOCK_NB) && isOwnAt(folder, path))
        tools::removeTree(path);
}

} // namespace

TemporaryFolder::TemporaryFolder() {
    const std::string pattern = fs::temp_directory_path() / (namesBegin + "XXXXXX");
    do {
        path_ = pattern;
        if (mkdtemp(path_.data()) == nullptr)
            throw std::runtime_error("no temporary folder can be made in " + fs::temp_directory_path().string());
        folder_ = opened(path_);
        if (!folder_ && errno != ENOENT)
            throw std::runtime_error(path_ + " cannot be opened");
        // Another run may have found it without a lock, and has it locked then until it is gone.
    } while (!folder_ || (isLocked(folder_) && !isOwnAt(folder_, path_)));
}

TemporaryFolder::~TemporaryFolder() {
    tools::removeTree(path_);
}

void removeAbandonedFolders() {
    std::error_code problem;
    const fs::path above = fs::temp_directory_path(problem);
    if (problem)
        return;
    for (fs::directory_iterator item(above, problem), end; !problem && item != end; item.increment(problem))
        if (item->path().filename().string().starts_with(namesBegin))
            removeWhenAbandoned(item->path());
}

} // namespace vant::media
