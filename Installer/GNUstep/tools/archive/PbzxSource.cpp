#include "GNUstep/tools/archive/PbzxSource.hpp"

#include "GNUstep/tools/archive/Bytes.hpp"
#include "GNUstep/tools/archive/LzmaSource.hpp"

#include <algorithm>
#include <array>

namespace vant::tools {

namespace {

constexpr std::string_view magicText = "pbzx";
constexpr std::uint64_t largestChunk = std::uint64_t{64} << 20;

} // namespace

/// The compressed stream, of which any number of bytes can be taken.
class PbzxSource::Input {
public:
    explicit Input(ByteSource &source) : source_(source) {}

    /// At most `most` of the next bytes; empty at the end.
    std::span<const char> next(std::uint64_t most) {
        if (waiting_.empty())
            waiting_ = source_.next();
        const auto bytes = waiting_.first(std::min<std::uint64_t>(most, waiting_.size()));
        waiting_ = waiting_.subspan(bytes.size());
        return bytes;
    }

    /// As many bytes as the buffer has room for, or fewer at the end.
    std::size_t read(std::span<char> buffer) {
        std::size_t count = 0;
        while (count < buffer.size()) {
            const auto bytes = next(buffer.size() - count);
            if (bytes.empty())
                break;
            std::ranges::copy(bytes, buffer.begin() + static_cast<std::ptrdiff_t>(count));
            count += bytes.size();
        }
        return count;
    }

private:
    ByteSource &source_;
    std::span<const char> waiting_;
};

/// The stored bytes of one chunk.
class PbzxSource::Chunk : public ByteSource {
public:
    Chunk(Input &input, std::uint64_t length) : input_(input), left_(length) {}

protected:
    std::size_t fill(std::span<char> buffer) override {
        const auto count = input_.read(buffer.first(std::min<std::uint64_t>(left_, buffer.size())));
        if (count == 0 && left_ > 0)
            throw ExpansionError("the compressed data ends too early");
        left_ -= count;
        return count;
    }

private:
    Input &input_;
    std::uint64_t left_;
};

PbzxSource::PbzxSource(ByteSource &compressed) : input_(std::make_unique<Input>(compressed)) {
    std::array<char, 12> head{};
    if (input_->read(head) != head.size())
        throw ExpansionError("the compressed data ends too early");
}

PbzxSource::~PbzxSource() = default;

bool PbzxSource::isPbzx(ByteSource &source) {
    return source.magic().starts_with(magicText);
}

bool PbzxSource::openChunk() {
    // The checksums of the last chunk stand behind its data.
    if (plain_ && !plain_->next().empty())
        throw ExpansionError("the compressed data is damaged");
    std::array<char, 16> head{};
    const auto count = input_->read(head);
    if (count == 0)
        return false;
    Fields fields(std::span<const char>(head).first(count));
    left_ = fields.big<std::uint64_t>();
    const auto length = fields.big<std::uint64_t>();
    if (left_ == 0 || left_ > largestChunk || length > left_)
        throw ExpansionError("the compressed data is damaged");
    stored_ = std::make_unique<Chunk>(*input_, length);
    plain_ = length == left_ ? nullptr : std::make_unique<LzmaSource>(*stored_);
    return true;
}

std::size_t PbzxSource::fill(std::span<char> buffer) {
    if (waiting_.empty()) {
        if (left_ == 0 && !openChunk())
            return 0;
        waiting_ = plain_ ? plain_->next() : stored_->next();
        if (waiting_.empty() || waiting_.size() > left_)
            throw ExpansionError("the compressed data is damaged");
        left_ -= waiting_.size();
    }
    const auto count = std::min(waiting_.size(), buffer.size());
    std::ranges::copy(waiting_.first(count), buffer.begin());
    waiting_ = waiting_.subspan(count);
    return count;
}

} // namespace vant::tools
