#pragma once
#include "EntryPath.hpp"
#include "GNUstep/files/Descriptor.hpp"

#include <sys/stat.h>

#include <ctime>
#include <span>
#include <string>
#include <vector>

namespace vant {

/// A folder that entries are written into, and never anything outside it: every folder on the way to an entry is opened
/// from the one above without following links. It merges: existing folders stay, existing files and links are replaced.
/// Errors are ExpansionErrors that name the entry. One thread.
class Destination {
public:
    /// Creates the folder with its intermediate ones where they are missing. The path itself may pass through links,
    /// but none is followed on the way to `below`, the place in the folder that entries' paths begin at. Links may lead
    /// anywhere inside the folder.
    explicit Destination(const std::string &folder, const EntryPath &below = {});

    /// Makes sure that the folder exists; the mode and the time are given to a new one in `finish`.
    void makeFolder(const EntryPath &path, mode_t mode, std::timespec modified);
    /// Replaces or creates a file and returns it open for writing, with the permissions of `mode`.
    [[nodiscard]] Descriptor createFile(const EntryPath &path, mode_t mode);
    /// Replaces or creates a symbolic link; refuses one that leads out of the destination.
    void makeLink(const EntryPath &path, const std::string &target);
    /// Replaces or creates a second name of a regular file of the destination.
    void makeHardLink(const EntryPath &path, const EntryPath &existing);
    /// Removes what a failed write left of a file.
    void removeFile(const EntryPath &path) noexcept;
    /// Gives the folders made here their own modes and times, now that nothing more is written into them.
    void finish();

private:
    struct MadeFolder {
        EntryPath path;
        mode_t mode;
        std::timespec modified;
    };

    int parentOf(const EntryPath &path);
    [[nodiscard]] Descriptor openFolder(std::span<const std::string> folders, bool create) const;
    static void clearWay(int parent, const EntryPath &path);

    Descriptor root_;
    std::size_t depth_ = 0; ///< folders between the folder and the place that entries' paths begin at
    Descriptor parent_;
    std::vector<std::string> parentFolders_;
    std::vector<MadeFolder> made_;
};

/// Gives an open file or folder its time of modification and leaves the time of access; false when that fails.
[[nodiscard]] bool setModified(int file, std::timespec modified);

/// Writes all bytes at the place in the file; throws an ExpansionError with `name` otherwise.
void writeAt(int file, std::span<const char> bytes, std::int64_t offset, const std::string &name);

} // namespace vant
