#include "GNUstep/files/SubpathWalk.hpp"

#include "GNUstep/process/Uninterrupted.hpp"

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace vant {
namespace {

struct Closer {
    void operator()(DIR *folder) const noexcept { closedir(folder); }
};
using Folder = std::unique_ptr<DIR, Closer>;

/// A folder that is being listed, and the length of its path with the slash behind it.
struct Level {
    Folder folder;
    std::size_t length;
};

Folder opened(const std::string &path, int links) {
    const int descriptor =
        uninterrupted([&] { return open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | links); });
    if (descriptor == -1)
        return nullptr;
    Folder folder(fdopendir(descriptor));
    if (folder == nullptr)
        close(descriptor);
    return folder;
}

/// The next entry, nullptr at the end. A file system of a user's program may let a signal interrupt the reading.
const dirent *nextEntry(DIR *folder) noexcept {
    const dirent *entry = nullptr;
    do {
        errno = 0;
        entry = readdir(folder);
    } while (entry == nullptr && errno == EINTR);
    return entry;
}

bool isSelfOrParent(const char *name) noexcept {
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

// Most file systems tell the kind with the name, which spares a question for each item.
bool isFolder(const dirent &entry, const std::string &path) noexcept {
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

void walkSubpaths(const std::string &folder, const std::function<bool(std::string_view)> &take) {
    std::string path = folder + '/';
    const std::size_t top = path.size();
    std::vector<Level> levels;
    const auto enter = [&](int links) {
        if (Folder next = opened(path, links))
            levels.push_back({std::move(next), path.size()});
    };
    enter(0);
    while (!levels.empty()) {
        path.resize(levels.back().length);
        const dirent *entry = nextEntry(levels.back().folder.get());
        if (entry == nullptr) {
            levels.pop_back();
            continue;
        }
        if (isSelfOrParent(entry->d_name))
            continue;
        path += entry->d_name;
        if (!take(std::string_view(path).substr(top)) || !isFolder(*entry, path))
            continue;
        path += '/';
        enter(O_NOFOLLOW);
    }
}

} // namespace vant
