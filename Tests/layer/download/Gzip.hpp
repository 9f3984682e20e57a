#pragma once
#include <string>
#include <string_view>

namespace vant::test {

enum class Wrapping { gzip, zlib, none };

/// The text packed by zlib.
[[nodiscard]] std::string packed(std::string_view text, Wrapping wrapping);

[[nodiscard]] inline std::string gzip(std::string_view text) {
    return packed(text, Wrapping::gzip);
}

} // namespace vant::test
