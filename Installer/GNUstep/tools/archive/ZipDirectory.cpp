#include "GNUstep/tools/archive/ZipDirectory.hpp"

#include "GNUstep/tools/archive/Bytes.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>
#include <optional>
#include <string_view>

namespace vant::tools {

namespace {

constexpr std::string_view tailMark = "PK\x05\x06";
constexpr std::string_view wideTailMark = "PK\x06\x06";
constexpr std::string_view locatorMark = "PK\x06\x07";
constexpr std::string_view recordMark = "PK\x01\x02";
constexpr std::size_t tailLength = 22;
constexpr std::size_t locatorLength = 20;
constexpr std::size_t wideTailLength = 56;
constexpr std::size_t recordLength = 46;
constexpr std::size_t longestComment = 0xFFFF;
constexpr std::uint32_t inWideField = 0xFFFFFFFF;

/// Identifiers of the extra fields.
constexpr std::uint16_t wideField = 0x0001;
constexpr std::uint16_t timeField = 0x5455;
constexpr std::uint16_t oldTimeField = 0x5855;

ExpansionError damaged() {
    ExpansionError error("the zip's directory is damaged");
    return error;
}

void expect(Fields &fields, std::string_view mark) {
    if (fields.text(mark.size()) != mark)
        throw damaged();
}

/// Local time, as the format has it.
std::time_t dosTime(std::uint16_t time, std::uint16_t date) {
    std::tm parts{};
    parts.tm_sec = (time & 31) * 2;
    parts.tm_min = time >> 5 & 63;
    parts.tm_hour = time >> 11;
    parts.tm_mday = date & 31;
    parts.tm_mon = (date >> 5 & 15) - 1;
    parts.tm_year = (date >> 9) + 80;
    parts.tm_isdst = -1;
    return std::mktime(&parts);
}

void widen(std::uint64_t &value, Fields &field) {
    if (value == inWideField)
        value = field.little<std::uint64_t>();
}

void readExtras(Fields extras, ZipRecord &record) {
    while (extras.left() >= 4) {
        const auto identifier = extras.little<std::uint16_t>();
        Fields field(extras.take(std::min<std::size_t>(extras.little<std::uint16_t>(), extras.left())));
        if (identifier == wideField) {
            widen(record.size, field);
            widen(record.packed, field);
            widen(record.offset, field);
        } else if (identifier == timeField && field.left() >= 5 && (field.little<std::uint8_t>() & 1) != 0) {
            record.modified = static_cast<std::int32_t>(field.little<std::uint32_t>());
        } else if (identifier == oldTimeField && field.left() >= 8) {
            field.skip(4);
            record.modified = static_cast<std::int32_t>(field.little<std::uint32_t>());
        }
    }
}

/// Lengths of what follows the fixed part of a record.
struct Lengths {
    std::size_t name;
    std::size_t extras;
    std::size_t comment;
};

Lengths readFixedPart(Fields fields, ZipRecord &record) {
    expect(fields, recordMark);
    fields.skip(4); // versions
    record.flags = fields.little<std::uint16_t>();
    record.method = fields.little<std::uint16_t>();
    const auto time = fields.little<std::uint16_t>();
    record.modified = dosTime(time, fields.little<std::uint16_t>());
    record.checksum = fields.little<std::uint32_t>();
    record.packed = fields.little<std::uint32_t>();
    record.size = fields.little<std::uint32_t>();
    const std::size_t name = fields.little<std::uint16_t>();
    const std::size_t extras = fields.little<std::uint16_t>();
    const std::size_t comment = fields.little<std::uint16_t>();
    fields.skip(4); // disk, internal attributes
    record.attributes = fields.little<std::uint32_t>();
    record.offset = fields.little<std::uint32_t>();
    return {name, extras, comment};
}

} // namespace

/// The record behind the directory.
struct ZipDirectory::Tail {
    std::uint64_t disk = 0;
    std::uint64_t countHere = 0;
    std::uint64_t count = 0;
    std::uint64_t length = 0;
    std::uint64_t offset = 0;
};

void readAt(int file, std::span<char> bytes, std::uint64_t offset) {
    while (!bytes.empty()) {
        const auto count = ::pread(file, bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw systemError("the archive", errno);
        if (count == 0)
            throw ExpansionError("the archive ends too early");
        bytes = bytes.subspan(static_cast<std::size_t>(count));
        offset += static_cast<std::uint64_t>(count);
    }
}

ZipDirectory::ZipDirectory(int file, std::uint64_t size) : file_(file) {
    std::string end(std::min<std::uint64_t>(size, tailLength + longestComment), '\0');
    readAt(file, end, size - end.size());
    const auto found = end.size() < tailLength ? std::string::npos : end.rfind(tailMark, end.size() - tailLength);
    if (found == std::string::npos)
        throw ExpansionError("the archive is no zip, or its end is missing");
    Fields fields(std::span<const char>(end).subspan(found + tailMark.size()));
    Tail tail;
    tail.disk = fields.little<std::uint16_t>() | fields.little<std::uint16_t>();
    tail.countHere = fields.little<std::uint16_t>();
    tail.count = fields.little<std::uint16_t>();
    tail.length = fields.little<std::uint32_t>();
    tail.offset = fields.little<std::uint32_t>();
    findStart(tail, size - end.size() + found);
    rewind();
}

void ZipDirectory::findStart(const Tail &tail, std::uint64_t end) {
    auto last = tail;
    std::array<char, wideTailLength> bytes{};
    const auto locator = std::span(bytes).first(locatorLength);
    if (end >= locatorLength + wideTailLength)
        readAt(file_, locator, end - locatorLength);
    if (std::string_view(bytes.data(), locatorMark.size()) == locatorMark) {
        end -= locatorLength + wideTailLength; // nothing stands between the two as a rule
        readAt(file_, bytes, end);
        Fields fields(bytes);
        expect(fields, wideTailMark);
        fields.skip(12);
        last.disk = fields.little<std::uint32_t>() | fields.little<std::uint32_t>();
        last.countHere = fields.little<std::uint64_t>();
        last.count = fields.little<std::uint64_t>();
        last.length = fields.little<std::uint64_t>();
        last.offset = fields.little<std::uint64_t>();
    }
    if (last.disk != 0 || last.countHere != last.count)
        throw ExpansionError("the zip is one of several parts");
    if (last.length > end || last.offset > end - last.length)
        throw damaged();
    end_ = end;
    start_ = end - last.length;
    shift_ = start_ - last.offset;
    count_ = last.count;
}

void ZipDirectory::rewind() {
    at_ = start_;
    given_ = 0;
}

bool ZipDirectory::next(ZipRecord &record) {
    if (given_ == count_ || at_ == end_) {
        if (given_ != count_ || at_ != end_)
            throw damaged();
        return false;
    }
    std::array<char, recordLength> bytes{};
    if (end_ - at_ < bytes.size())
        throw damaged();
    readAt(file_, bytes, at_);
    const auto lengths = readFixedPart(Fields(bytes), record);

    std::string variable(lengths.name + lengths.extras, '\0');
    if (end_ - at_ - bytes.size() < variable.size() + lengths.comment)
        throw damaged();
    readAt(file_, variable, at_ + bytes.size());
    record.name = variable.substr(0, lengths.name);
    readExtras(Fields(std::span<const char>(variable).subspan(lengths.name)), record);
    record.offset += shift_;
    at_ += bytes.size() + variable.size() + lengths.comment;
    ++given_;
    return true;
}

} // namespace vant::tools
