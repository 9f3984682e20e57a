#pragma once
#include "GNUstep/tools/archive/ByteSource.hpp"
#include "GNUstep/tools/archive/EntryReader.hpp"

#include <archive.h>
#include <archive_entry.h>

#include <memory>
#include <string>

namespace vant::tools {

/// Reads archives by way of libarchive, whose warnings are errors here: they tell of damage or of something left out.
class ArchiveReader : public EntryReader {
public:
    /// A cpio, plain or compressed with bzip2 (for other compressions, see `decompressed`). The source must outlive the
    /// reader.
    static std::unique_ptr<ArchiveReader> cpio(ByteSource &source);
    /// A package's payload: as `cpio`, and the tar formats, which old bundle packages use.
    static std::unique_ptr<ArchiveReader> payload(ByteSource &source);
    /// A xar by its path.
    static std::unique_ptr<ArchiveReader> xar(const std::string &path);

    bool next(Entry &entry) override;
    bool nextBlock(DataBlock &block) override;

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

} // namespace vant::tools
