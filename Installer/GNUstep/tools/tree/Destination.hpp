#pragma once
#include "GNUstep/files/Descriptor.hpp"
#include "GNUstep/tools/tree/EntryPath.hpp"

#include <sys/stat.h>

#include <ctime>
#include <deque>
#include <span>
#include <string>
#include <vector>

namespace vant::tools {

/// An empty folder that entries are written into, and never anything outside it: every folder on the way to an entry is
/// opened from the one above without following links. A later entry replaces an earlier one of the same name. Errors
/// are ExpansionErrors that name the entry. One thread.
class Destination {
public:
    /// `below` is the place in the existing folder that entries' paths begin at; `allowed` are the permissions that
    /// anything written here may have at most.
    Destination(const std::string &folder, mode_t allowed, const EntryPath &below = {});

    /// Makes sure that the folder exists; the mode and the time are given to a new one in `finish`.
    void makeFolder(const EntryPath &path, mode_t mode, std::timespec modified);
    /// Replaces or creates a file and returns it open for writing, with the permissions of `mode`.
    [[nodiscard]] Descriptor createFile(const EntryPath &path, mode_t mode);
    /// Replaces or creates a symbolic link. It may lead anywhere: nothing is ever written through it.
    void makeLink(const EntryPath &path, const std::string &target);
    /// Replaces or creates a second name of a regular file of the destination.
    void makeHardLink(const EntryPath &path, const EntryPath &existing);
    /// Gives the folders made here their own modes and times, now that nothing more is written into them.
    void finish();

    /// Bytes that can still be written on the volume.
    [[nodiscard]] std::uint64_t freeBytes() const;
    /// Whether the full path stays below PATH_MAX: longer ones can be neither listed nor removed by path.
    [[nodiscard]] bool hasRoomFor(const EntryPath &path) const;

private:
    struct MadeFolder {
        std::string path;
        mode_t mode;
        std::timespec modified;
    };

    int parentOf(const EntryPath &path);
    [[nodiscard]] Descriptor openFolder(std::span<const std::string> folders, bool create) const;
    static void clearWay(int parent, const EntryPath &path);

    std::size_t length_; ///< of the path of the place that entries' paths begin at
    mode_t allowed_;
    Descriptor root_;
    Descriptor parent_;
    std::vector<std::string> parentFolders_;
    std::deque<MadeFolder> made_;
};

/// Gives an open file or folder its time of modification and leaves the time of access; false when that fails.
[[nodiscard]] bool setModified(int file, std::timespec modified);

/// Writes all bytes at the place in the file; throws an ExpansionError with `name` otherwise.
void writeAt(int file, std::span<const char> bytes, std::int64_t offset, const std::string &name);

} // namespace vant::tools
