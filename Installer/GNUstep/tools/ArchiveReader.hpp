#pragma once
#include "ByteSource.hpp"

#include <archive.h>
#include <archive_entry.h>

#include <memory>
#include <string>

namespace vant {

/// A piece of an entry's data: its place in the file and its bytes, valid until the next call of the reader.
struct DataBlock {
    std::int64_t offset = 0;
    std::span<const char> bytes;
};

/// Reads one archive from its first entry to its last. Whatever is wrong with it is an ExpansionError, warnings
/// included: half an entry is no entry.
class ArchiveReader {
public:
    /// A zip by its path: links and modes stand only in the directory at its end, so a stream will not do.
    static ArchiveReader zip(const std::string &path);
    /// A cpio, plain or compressed with bzip2 (for gzip, see GunzipSource). The source must outlive the reader.
    static ArchiveReader cpio(ByteSource &source);
    /// A package's payload: as `cpio`, and the tar formats, which old bundle packages use.
    static ArchiveReader payload(ByteSource &source);
    /// A xar by its path.
    static ArchiveReader xar(const std::string &path);

    /// The next entry, valid until the next call; null after the last one.
    archive_entry *next();
    /// Fills `block` with the entry's next data; false at its end.
    bool nextBlock(DataBlock &block);

    [[nodiscard]] archive *handle() const { return handle_.get(); }

private:
    struct Closer {
        void operator()(archive *open) const { archive_read_free(open); }
    };

    ArchiveReader();
    void openFile(const std::string &path);
    void openSource(ByteSource &source);
    void check(int result, const char *otherwise) const;

    std::unique_ptr<archive, Closer> handle_;
};

} // namespace vant
