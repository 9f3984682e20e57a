#pragma once
#include "GNUstep/tools/archive/ExpansionError.hpp"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace vant::tools {

/// Reads numbers and texts from the front of a record. Throws ExpansionError past its end.
class Fields {
public:
    explicit Fields(std::span<const char> bytes) : bytes_(bytes) {}

    [[nodiscard]] std::size_t left() const { return bytes_.size(); }

    std::span<const char> take(std::size_t count) {
        if (count > bytes_.size())
            throw ExpansionError("a record of the archive ends too early");
        const auto front = bytes_.first(count);
        bytes_ = bytes_.subspan(count);
        return front;
    }

    void skip(std::size_t count) { static_cast<void>(take(count)); }

    std::string text(std::size_t count) {
        const auto bytes = take(count);
        return {bytes.begin(), bytes.end()};
    }

    template<std::unsigned_integral Number>
    Number little() {
        std::uint64_t value = 0;
        unsigned shift = 0;
        for (const char byte : take(sizeof(Number))) {
            value |= std::uint64_t{static_cast<unsigned char>(byte)} << shift;
            shift += 8;
        }
        return static_cast<Number>(value);
    }

    template<std::unsigned_integral Number>
    Number big() {
        std::uint64_t value = 0;
        for (const char byte : take(sizeof(Number)))
            value = value << 8U | static_cast<unsigned char>(byte);
        return static_cast<Number>(value);
    }

private:
    std::span<const char> bytes_;
};

} // namespace vant::tools
