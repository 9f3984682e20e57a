#pragma once
#include "GNUstep/tools/archive/EntryReader.hpp"
#include "GNUstep/tools/archive/ZipDirectory.hpp"

#include <memory>
#include <vector>

namespace vant::tools {

/// Reads a zip by its directory. Names keep their bytes, and each entry's own header has to agree with the directory:
/// the two say the same things twice, and what says them differently is damaged or forged. Stored and deflated entries
/// are read, which is all that the platform's tool writes and reads.
class ZipReader : public EntryReader {
public:
    explicit ZipReader(const std::string &path);
    ~ZipReader() override;

    bool next(Entry &entry) override;
    bool nextBlock(DataBlock &block) override;
    [[nodiscard]] std::optional<std::uint64_t> announcedBytes() const override { return announced_; }

private:
    struct Inflation;

    void sumUp();
    void openEntry();
    [[nodiscard]] std::uint64_t matchedHeaderLength() const;
    [[nodiscard]] Entry::Kind kind() const;
    std::string linkTarget();
    std::span<const char> nextBytes();
    std::span<const char> inflated();
    std::span<const char> read(std::span<char> buffer);
    void checkEnd() const;

    std::uint64_t fileSize_ = 0;
    Descriptor file_;
    ZipDirectory directory_;
    ZipRecord record_;
    std::unique_ptr<Inflation> inflation_;
    std::vector<char> packed_;
    std::vector<char> plain_;
    std::uint64_t announced_ = 0;
    std::uint64_t claimed_ = 0; ///< bytes of the zip that entries have claimed as theirs
    std::uint64_t at_ = 0;      ///< place of the entry's next packed byte
    std::uint64_t left_ = 0;    ///< packed bytes of the entry not yet read
    std::uint64_t given_ = 0;   ///< plain bytes of the entry
    std::uint32_t sum_ = 0;
};

} // namespace vant::tools
