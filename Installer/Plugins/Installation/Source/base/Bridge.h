#pragma once
#import <Foundation/Foundation.h>
#include <optional>
#include <string>
#include <string_view>

namespace vant {

/// The text as UTF-8; empty for nil. What has no UTF-8 form (a lone surrogate) is replaced.
[[nodiscard]] std::string utf8(NSString *text);

/// The value as UTF-8 when it is a string, nothing for nil or any other type.
[[nodiscard]] std::optional<std::string> optionalUTF8(id value);

/// An autoreleased string; bytes that are not UTF-8 are read as Latin-1, so that no text is lost.
[[nodiscard]] NSString *nsString(std::string_view text);

/// As above; nil for an absent text.
[[nodiscard]] NSString *nsStringOrNil(const std::optional<std::string> &text);

} // namespace vant
