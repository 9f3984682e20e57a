#pragma once
#include <string_view>

namespace vant {

/// Whether the bytes are text in UTF-8: no byte sequence that is cut, overlong, a surrogate or beyond U+10FFFF. A byte
/// order mark and the noncharacters (U+FFFE) are text like any other, which not every platform's reader leaves alone.
[[nodiscard]] bool isUTF8(std::string_view bytes) noexcept;

/// Whether the bytes begin with a byte order mark of UTF-16, in either order.
[[nodiscard]] bool isMarkedUTF16(std::string_view bytes) noexcept;

/// The bytes without a byte order mark of UTF-8 at their head. A view into them.
[[nodiscard]] std::string_view withoutUTF8Mark(std::string_view bytes) noexcept;

} // namespace vant
