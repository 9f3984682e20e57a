#pragma once
#include <sys/types.h>

#include <cstdint>
#include <ctime>
#include <optional>
#include <span>
#include <string>

namespace vant::tools {

/// One entry of an archive, as the archive describes it: nothing is checked yet.
struct Entry {
    enum class Kind { File, Folder, Link, HardLink, Other };

    std::string path; ///< the archive's own bytes
    Kind kind = Kind::File;
    mode_t mode = 0;
    std::optional<std::timespec> modified;
    std::uint64_t size = 0; ///< bytes of data that follow
    std::string target;     ///< where a link leads; the first name of a hard link
    bool hasOtherNames = false;
};

/// A piece of an entry's data: its place in the file and its bytes, valid until the next call of the reader.
struct DataBlock {
    std::int64_t offset = 0;
    std::span<const char> bytes;
};

/// Reads one archive from its first entry to its last. Whatever is wrong with it is an ExpansionError: half an entry is
/// no entry.
class EntryReader {
public:
    EntryReader() = default;
    EntryReader(const EntryReader &) = delete;
    EntryReader &operator=(const EntryReader &) = delete;
    virtual ~EntryReader() = default;

    /// Fills `entry` with the next one; false after the last one.
    virtual bool next(Entry &entry) = 0;
    /// Fills `block` with the entry's next data; false at its end, where its checksum has been tested.
    virtual bool nextBlock(DataBlock &block) = 0;
    /// Bytes that all entries hold together, when the archive says so beforehand.
    [[nodiscard]] virtual std::optional<std::uint64_t> announcedBytes() const { return std::nullopt; }
};

} // namespace vant::tools
