#include "base/PropertyListCheck.hpp"

#include <cstdint>
#include <optional>
#include <vector>

namespace vant {

namespace {

constexpr std::size_t headerSize = 8;
constexpr std::size_t trailerSize = 32;
/// What one object costs in memory beside its bytes, and what a whole list may cost.
constexpr std::uint64_t objectCost = 64;
constexpr std::uint64_t affordable = std::uint64_t{512} << 20U;

/// A big-endian number of 1 to 8 bytes, nothing when it does not lie inside the bytes.
std::optional<std::uint64_t> number(std::string_view bytes, std::size_t at, std::size_t size) noexcept {
    if (size == 0 || size > 8 || at > bytes.size() || bytes.size() - at < size)
        return std::nullopt;
    std::uint64_t value = 0;
    for (const char byte : bytes.substr(at, size))
        value = value << 8U | static_cast<unsigned char>(byte);
    return value;
}

/// One object: where its contents lie, and whether they are references to other objects.
struct Object {
    std::size_t contents = 0;
    std::size_t length = 0; ///< bytes of contents, references included
    bool isContainer = false;
};

/// The layout of a file: objects, then the table of their offsets, then the trailer.
struct Layout {
    std::string_view objects; ///< the file up to the offset table
    std::string_view offsets;
    std::size_t offsetSize = 0;
    std::size_t referenceSize = 0;
    std::uint64_t count = 0;
    std::uint64_t top = 0;

    [[nodiscard]] static std::optional<Layout> of(std::string_view bytes) noexcept;
    [[nodiscard]] std::optional<Object> object(std::size_t index) const noexcept;

private:
    [[nodiscard]] std::optional<Object> sized(std::size_t at, std::size_t unit, bool isContainer) const noexcept;
};

std::optional<Layout> Layout::of(std::string_view bytes) noexcept {
    if (bytes.size() < headerSize + trailerSize)
        return std::nullopt;
    const std::size_t trailer = bytes.size() - trailerSize;
    const std::uint64_t table = *number(bytes, trailer + 24, 8);
    if (table < headerSize || table > trailer)
        return std::nullopt;
    Layout layout{.objects = bytes.substr(0, table),
                  .offsets = bytes.substr(table, trailer - table),
                  .offsetSize = static_cast<std::size_t>(*number(bytes, trailer + 6, 1)),
                  .referenceSize = static_cast<std::size_t>(*number(bytes, trailer + 7, 1)),
                  .count = *number(bytes, trailer + 8, 8),
                  .top = *number(bytes, trailer + 16, 8)};
    const bool sizesFit = layout.offsetSize - 1 < 8 && layout.referenceSize - 1 < 8;
    if (!sizesFit || layout.count > layout.offsets.size() / layout.offsetSize || layout.top >= layout.count)
        return std::nullopt;
    return layout;
}

/// An object whose marker's low half, or the number behind it, counts units of a size.
std::optional<Object> Layout::sized(std::size_t at, std::size_t unit, bool isContainer) const noexcept {
    std::uint64_t units = static_cast<unsigned char>(objects[at]) & 0xFU;
    std::size_t contents = at + 1;
    if (units == 0xF) {
        const auto marker = number(objects, contents, 1);
        if (!marker || *marker < 0x10 || *marker > 0x13)
            return std::nullopt;
        const std::size_t size = std::size_t{1} << (*marker & 0xFU);
        const auto announced = number(objects, contents + 1, size);
        if (!announced)
            return std::nullopt;
        units = *announced;
        contents += 1 + size;
    }
    if (contents > objects.size() || units > (objects.size() - contents) / unit)
        return std::nullopt;
    return Object{contents, static_cast<std::size_t>(units) * unit, isContainer};
}

std::optional<Object> Layout::object(std::size_t index) const noexcept {
    const auto offset = number(offsets, index * offsetSize, offsetSize);
    if (!offset || *offset < headerSize || *offset >= objects.size())
        return std::nullopt;
    const auto at = static_cast<std::size_t>(*offset);
    const unsigned marker = static_cast<unsigned char>(objects[at]);
    const std::size_t power = std::size_t{1} << (marker & 0xFU);
    const auto fixed = [&](std::size_t length) -> std::optional<Object> {
        return objects.size() - at - 1 < length ? std::nullopt : std::optional(Object{at + 1, length, false});
    };
    switch (marker >> 4U) {
    case 0x0: // null, false, true
        return fixed(0);
    case 0x1: // integer
    case 0x2: // real
    case 0x3: // date
        return fixed(power);
    case 0x4: // data
    case 0x5: // ASCII string
    case 0x7: // UTF-8 string
        return sized(at, 1, false);
    case 0x6: // UTF-16 string
        return sized(at, 2, false);
    case 0x8: // identifier
        return fixed((marker & 0xFU) + 1);
    case 0xA: // array
    case 0xB: // ordered set
    case 0xC: // set
        return sized(at, referenceSize, true);
    case 0xD: // dictionary: its keys, then its values
        return sized(at, 2 * referenceSize, true);
    default:
        return std::nullopt;
    }
}

/// A walk over all that the top object holds, without recursion: the depth of the walk is the depth of the list.
class Walk {
public:
    explicit Walk(const Layout &layout) : layout_(layout), costs_(layout.count, unknown) {}

    [[nodiscard]] bool isSound() {
        if (!enter(layout_.top))
            return false;
        while (!path_.empty()) {
            Step &step = path_.back();
            if (step.read == step.object.length)
                leave();
            else if (!follow(step))
                return false;
        }
        return !isTooCostly_;
    }

private:
    static constexpr std::uint64_t unknown = 0;
    static constexpr std::uint64_t onPath = 1;

    /// A container that is being walked: how much of its references has been read, and what it costs so far.
    struct Step {
        std::size_t index;
        Object object;
        std::size_t read;
        std::uint64_t cost;
    };

    bool follow(Step &step) {
        const auto reference = number(layout_.objects, step.object.contents + step.read, layout_.referenceSize);
        step.read += layout_.referenceSize;
        if (!reference || *reference >= layout_.count)
            return false;
        const std::uint64_t cost = costs_[*reference];
        if (cost == onPath)
            return false;
        return cost == unknown ? enter(*reference) : charge(step, cost);
    }

    bool enter(std::uint64_t index) {
        const auto object = layout_.object(index);
        if (!object || !isReadForTheFirstTime(*object) || path_.size() == deepestPropertyList)
            return false;
        path_.push_back({static_cast<std::size_t>(index), *object, 0, objectCost + object->length});
        costs_[index] = onPath;
        if (!object->isContainer)
            leave();
        return !isTooCostly_;
    }

    /// References lie beside each other in an honest file, so together they cannot be longer than the file. Without
    /// this, many containers that share one long list of references would take for ever to walk.
    bool isReadForTheFirstTime(const Object &object) {
        references_ += object.isContainer ? object.length : 0;
        return references_ <= layout_.objects.size();
    }

    void leave() {
        const Step step = path_.back();
        path_.pop_back();
        costs_[step.index] = step.cost;
        if (!path_.empty() && !charge(path_.back(), step.cost))
            isTooCostly_ = true;
    }

    static bool charge(Step &step, std::uint64_t cost) {
        step.cost += cost;
        return step.cost <= affordable;
    }

    const Layout &layout_;
    std::vector<std::uint64_t> costs_; ///< of every object walked; greater than the two marks
    std::vector<Step> path_;
    std::size_t references_ = 0;
    bool isTooCostly_ = false;
};

} // namespace

bool isBinaryPropertyListSound(std::string_view bytes) {
    const auto layout = Layout::of(bytes);
    return layout && Walk(*layout).isSound();
}

} // namespace vant
