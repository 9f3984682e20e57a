#include "GNUstep/tools/archive/CpioSums.hpp"

#include "GNUstep/tools/archive/ExpansionError.hpp"

#include <algorithm>
#include <charconv>
#include <numeric>
#include <string_view>

namespace vant::tools {

namespace {

constexpr std::string_view magicWithSums = "070702";
constexpr std::size_t headerLength = 110;
constexpr std::uint64_t alignment = 4;

/// Places of the header's fields, each of eight hexadecimal digits.
enum Field : std::size_t { Size = 54, NameLength = 94, Sum = 102 };

std::uint32_t number(std::string_view header, Field field) {
    std::uint32_t value = 0;
    const auto digits = header.substr(field, 8);
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (read.ptr != digits.data() + digits.size())
        throw ExpansionError("a header of the archive is damaged");
    return value;
}

std::uint64_t paddingBehind(std::uint64_t length) {
    return (alignment - length % alignment) % alignment;
}

} // namespace

bool CpioSums::hasSums(ByteSource &source) {
    return source.magic() == magicWithSums;
}

std::size_t CpioSums::fill(std::span<char> buffer) {
    if (waiting_.empty())
        waiting_ = cpio_.next();
    const auto bytes = waiting_.first(std::min(waiting_.size(), buffer.size()));
    waiting_ = waiting_.subspan(bytes.size());
    std::ranges::copy(bytes, buffer.begin());
    feed(bytes);
    return bytes.size();
}

void CpioSums::feed(std::span<const char> bytes) {
    while (!bytes.empty() && part_ != Part::Behind) {
        const auto wanted = part_ == Part::Header ? headerLength - header_.size() : left_;
        const auto here = bytes.first(std::min<std::uint64_t>(wanted, bytes.size()));
        bytes = bytes.subspan(here.size());
        if (part_ == Part::Header)
            takeHeader(here);
        else
            takePart(here);
    }
}

void CpioSums::takeHeader(std::span<const char> bytes) {
    header_.append(bytes.begin(), bytes.end());
    if (header_.size() == headerLength)
        readHeader();
}

void CpioSums::takePart(std::span<const char> bytes) {
    const auto counted = std::min<std::uint64_t>(bytes.size(), left_ - std::min(left_, padding_));
    if (part_ == Part::Data)
        sum_ = std::accumulate(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(counted), sum_,
                               [](std::uint32_t sum, char byte) { return sum + static_cast<unsigned char>(byte); });
    left_ -= bytes.size();
    endOfPart();
}

void CpioSums::readHeader() {
    if (!header_.starts_with(magicWithSums)) {
        part_ = Part::Behind; // whatever this is, the archive library judges it
        return;
    }
    size_ = number(header_, Size);
    nameLength_ = number(header_, NameLength);
    expected_ = number(header_, Sum);
    sum_ = 0;
    padding_ = paddingBehind(headerLength + nameLength_);
    left_ = nameLength_ + padding_;
    part_ = Part::Name;
    header_.clear();
    endOfPart();
}

void CpioSums::endOfPart() {
    if (left_ == 0 && part_ == Part::Name) {
        padding_ = paddingBehind(size_);
        left_ = size_ + padding_;
        part_ = Part::Data;
    }
    if (left_ != 0 || part_ != Part::Data)
        return;
    // Writers leave the sum of links at zero; a name whose data comes with a later name may bear the sum of that.
    if (sum_ != expected_ && expected_ != 0 && size_ != 0)
        throw ExpansionError("a file's sum is wrong, the archive is damaged");
    part_ = Part::Header;
}

} // namespace vant::tools
