#pragma once
#include "GNUstep/files/Descriptor.hpp"

#include <cstdint>
#include <ctime>
#include <span>
#include <string>

namespace vant::tools {

/// What the directory at the end of a zip says of one entry.
struct ZipRecord {
    std::string name; ///< its own bytes, in whatever encoding
    std::uint16_t flags = 0;
    std::uint16_t method = 0;
    std::uint32_t checksum = 0;
    std::uint32_t attributes = 0; ///< a Unix mode in the upper half, where there is one
    std::uint64_t packed = 0;     ///< bytes in the zip
    std::uint64_t size = 0;       ///< bytes of the file
    std::uint64_t offset = 0;     ///< of the entry's own header in the file
    std::time_t modified = 0;
};

/// The directory of a zip, read record by record: memory use does not grow with its length. Throws ExpansionError.
class ZipDirectory {
public:
    /// `file` must stay open, `size` is its length. Zeros or other bytes behind the zip are passed over, and so is a
    /// program before it.
    ZipDirectory(int file, std::uint64_t size);

    /// Fills `record` with the next one; false after the last one, when their number and length are as announced.
    bool next(ZipRecord &record);
    /// Starts again with the first record.
    void rewind();
    /// Where the directory begins, which is where the entries have to end.
    [[nodiscard]] std::uint64_t start() const { return start_; }

private:
    struct Tail;

    void findStart(const Tail &tail, std::uint64_t end);

    int file_;
    std::uint64_t start_ = 0;
    std::uint64_t end_ = 0;
    std::uint64_t count_ = 0;
    std::uint64_t shift_ = 0; ///< bytes before the zip, which its offsets don't count
    std::uint64_t at_ = 0;
    std::uint64_t given_ = 0;
};

/// Reads exactly as many bytes as asked for from that place of a file. Throws ExpansionError at its end.
void readAt(int file, std::span<char> bytes, std::uint64_t offset);

} // namespace vant::tools
