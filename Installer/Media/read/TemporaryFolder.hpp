#pragma once
#include "GNUstep/files/Descriptor.hpp"

#include <string>

namespace vant::media {

/// A new folder that goes with its owner, and all that is in it. Throws std::runtime_error when there is none to be
/// had.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;
    ~TemporaryFolder();
    [[nodiscard]] const std::string &path() const { return path_; }

private:
    std::string path_;
    Descriptor folder_; ///< locked for as long as this process, or a worker of it, lives
};

/// Removes the folders that this user's runs have left which were killed. Those in use stay, and so does whatever only
/// has such a name: links, files, folders of others. Any thread.
void removeAbandonedFolders();

} // namespace vant::media
