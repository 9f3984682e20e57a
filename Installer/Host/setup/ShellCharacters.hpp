#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace vant::host {

/// The name of the first character that a shell reads inside double quotes, or that ends its line; absent when there is
/// none. Percent-encoded characters count, since a download is named after what they stand for.
[[nodiscard]] std::optional<std::string> shellCharacter(std::string_view location);

/// The same of a file's name, in which a percent sign is only that.
[[nodiscard]] std::optional<std::string> shellCharacterInName(std::string_view name);

} // namespace vant::host
