#include "GNUstep/tools/archive/ZipReader.hpp"

#include "GNUstep/tools/archive/Bytes.hpp"
#include "GNUstep/tools/archive/ByteSource.hpp"

#include <sys/stat.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <climits>
#include <new>

namespace vant::tools {

namespace {

constexpr std::string_view headerMark = "PK\x03\x04";
constexpr std::size_t headerLength = 30;
constexpr std::size_t blockSize = std::size_t{128} * 1024;
constexpr std::uint16_t encrypted = 1U << 0U;
constexpr std::uint16_t sizesBehindData = 1U << 3U;
constexpr std::uint16_t hiddenNames = 1U << 13U;
constexpr std::uint32_t inWideField = 0xFFFFFFFF;

enum Method : std::uint16_t { Stored = 0, Deflated = 8 };

/// Sizes and checksum that only follow the data may stand in the header too, or zeros in their place.
bool agrees(std::uint32_t here, std::uint64_t directory, bool behindData) {
    return here == directory || here == inWideField || (behindData && here == 0);
}

mode_t modeFrom(const ZipRecord &record, Entry::Kind kind) {
    const auto mode = static_cast<mode_t>(record.attributes >> 16U);
    if (mode != 0)
        return mode & 07777;
    return kind == Entry::Kind::Folder ? 0755 : 0644;
}

} // namespace

struct ZipReader::Inflation {
    Inflation() {
        if (inflateInit2(&stream, -MAX_WBITS) != Z_OK)
            throw std::bad_alloc();
    }
    Inflation(const Inflation &) = delete;
    Inflation &operator=(const Inflation &) = delete;
    ~Inflation() { inflateEnd(&stream); }

    z_stream stream{};
    bool atEnd = false;
};

ZipReader::ZipReader(const std::string &path)
    : file_(openRegularFile(path, fileSize_)), directory_(file_.get(), fileSize_),
      inflation_(std::make_unique<Inflation>()), packed_(blockSize), plain_(blockSize) {
    sumUp();
}

ZipReader::~ZipReader() = default;

void ZipReader::sumUp() {
    while (directory_.next(record_)) {
        if (record_.size > LLONG_MAX - announced_)
            throw ExpansionError("the zip's directory is damaged");
        announced_ += record_.size;
    }
    directory_.rewind();
}

bool ZipReader::next(Entry &entry) {
    if (!directory_.next(record_))
        return false;
    openEntry();
    entry = {};
    entry.path = record_.name;
    entry.kind = kind();
    entry.modified = std::timespec{.tv_sec = record_.modified, .tv_nsec = 0};
    entry.mode = modeFrom(record_, entry.kind);
    entry.size = record_.size;
    if (entry.kind == Entry::Kind::Link)
        entry.target = linkTarget();
    return true;
}

void ZipReader::openEntry() {
    if ((record_.flags & (encrypted | hiddenNames)) != 0)
        throw ExpansionError(shortened(record_.name) + ": encrypted, which cannot be read here");
    if (record_.method != Stored && record_.method != Deflated)
        throw ExpansionError(shortened(record_.name) + ": compressed by method " + std::to_string(record_.method) +
                             ", which cannot be read here");
    const auto length = matchedHeaderLength();
    at_ = record_.offset + length;
    left_ = record_.packed;
    claimed_ += length + record_.packed;
    if (at_ > directory_.start() || left_ > directory_.start() - at_ || claimed_ > directory_.start())
        throw ExpansionError(shortened(record_.name) + ": the zip's entries overlap");
    given_ = 0;
    sum_ = 0;
    inflateReset(&inflation_->stream);
    inflation_->stream.avail_in = 0;
    inflation_->atEnd = record_.method == Stored;
}

std::uint64_t ZipReader::matchedHeaderLength() const {
    std::array<char, headerLength> bytes{};
    readAt(file_.get(), bytes, record_.offset);
    Fields fields(bytes);
    bool same = fields.text(headerMark.size()) == headerMark;
    fields.skip(2); // version
    const auto flags = fields.little<std::uint16_t>();
    const bool behind = (flags & sizesBehindData) != 0;
    same = ((flags ^ record_.flags) & (encrypted | sizesBehindData)) == 0 && same;
    same = fields.little<std::uint16_t>() == record_.method && same;
    fields.skip(4); // time
    same = agrees(fields.little<std::uint32_t>(), record_.checksum, behind) && same;
    same = agrees(fields.little<std::uint32_t>(), record_.packed, behind) && same;
    same = agrees(fields.little<std::uint32_t>(), record_.size, behind) && same;
    const std::size_t nameLength = fields.little<std::uint16_t>();
    const std::size_t extraLength = fields.little<std::uint16_t>();
    std::string name(nameLength, '\0');
    if (same)
        readAt(file_.get(), name, record_.offset + headerLength);
    if (!same || name != record_.name)
        throw ExpansionError(shortened(record_.name) + ": the zip's directory and the entry's own header differ");
    return headerLength + nameLength + extraLength;
}

Entry::Kind ZipReader::kind() const {
    const auto type = static_cast<mode_t>(record_.attributes >> 16U) & S_IFMT;
    if (record_.name.ends_with('/'))
        return type == 0 || type == S_IFDIR ? Entry::Kind::Folder : Entry::Kind::Other;
    if (type == S_IFDIR)
        return Entry::Kind::Folder;
    if (type == S_IFLNK)
        return Entry::Kind::Link;
    return type == 0 || type == S_IFREG ? Entry::Kind::File : Entry::Kind::Other;
}

std::string ZipReader::linkTarget() {
    std::string target;
    for (DataBlock block; nextBlock(block);) {
        target.append(block.bytes.begin(), block.bytes.end());
        if (target.size() >= PATH_MAX)
            throw ExpansionError(shortened(record_.name) + ": a link with a target too long to be meant");
    }
    return target;
}

bool ZipReader::nextBlock(DataBlock &block) {
    block.offset = static_cast<std::int64_t>(given_);
    block.bytes = nextBytes();
    given_ += block.bytes.size();
    if (given_ > record_.size)
        throw ExpansionError(shortened(record_.name) + ": longer than the zip's directory says");
    if (block.bytes.empty()) {
        checkEnd();
        return false;
    }
    sum_ = static_cast<std::uint32_t>(
        crc32(sum_, reinterpret_cast<const Bytef *>(block.bytes.data()), static_cast<uInt>(block.bytes.size())));
    return true;
}

std::span<const char> ZipReader::nextBytes() {
    return record_.method == Stored ? read(plain_) : inflated();
}

std::span<const char> ZipReader::read(std::span<char> buffer) {
    const auto bytes = buffer.first(std::min<std::uint64_t>(buffer.size(), left_));
    readAt(file_.get(), bytes, at_);
    at_ += bytes.size();
    left_ -= bytes.size();
    return bytes;
}

std::span<const char> ZipReader::inflated() {
    auto &stream = inflation_->stream;
    stream.next_out = reinterpret_cast<Bytef *>(plain_.data());
    stream.avail_out = static_cast<uInt>(plain_.size());
    while (!inflation_->atEnd && stream.avail_out == plain_.size()) {
        if (stream.avail_in == 0) {
            const auto bytes = read(packed_);
            // zlib's interface predates const; it does not write to its input.
            stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.data()));
            stream.avail_in = static_cast<uInt>(bytes.size());
        }
        const int result = inflate(&stream, Z_NO_FLUSH);
        if (result != Z_OK && result != Z_STREAM_END)
            throw ExpansionError(shortened(record_.name) + ": its compressed data is damaged");
        inflation_->atEnd = result == Z_STREAM_END;
    }
    return std::span(plain_).first(plain_.size() - stream.avail_out);
}

void ZipReader::checkEnd() const {
    if (left_ != 0 || inflation_->stream.avail_in != 0 || given_ != record_.size || sum_ != record_.checksum)
        throw ExpansionError(shortened(record_.name) + ": its checksum or its length is wrong");
}

} // namespace vant::tools
