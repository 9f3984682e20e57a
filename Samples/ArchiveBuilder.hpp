#pragma once
#include <sys/types.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vant::samples {

/// One thing to put into an archive, described as it will stand there: nothing is checked, so that hostile archives can
/// be built too.
struct Item {
    enum class Kind { File, Folder, Link, HardLink, Pipe };

    std::string path;
    Kind kind = Kind::File;
    std::string content; ///< data of a file, target of a link
    mode_t mode = 0644;
    std::int64_t inode = 0; ///< files of one inode (not 0) are names of one file
};

[[nodiscard]] Item file(std::string path, std::string content, mode_t mode = 0644);
[[nodiscard]] Item folder(std::string path, mode_t mode = 0755);
[[nodiscard]] Item link(std::string path, std::string target);
[[nodiscard]] Item hardLink(std::string path, std::string target);

enum class Format { Zip, Cpio, NewCpio, Pax, Xar };
enum class Filter { None, Gzip, Bzip2 };

/// Time stamp of every entry (seconds since 1970), so that the same items give the same archive.
inline constexpr std::int64_t itemTime = 1'600'000'000;

/// The archive as bytes. Throws std::runtime_error when an item cannot be written in that format.
[[nodiscard]] std::string archiveOf(Format format, Filter filter, const std::vector<Item> &items);

/// Writes the archive to a file, its folders included. Returns the path.
std::filesystem::path writeArchive(const std::filesystem::path &path, Format format, Filter filter,
                                   const std::vector<Item> &items);

} // namespace vant::samples
