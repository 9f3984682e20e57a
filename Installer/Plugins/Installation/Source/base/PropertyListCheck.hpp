#pragma once
#include <cstddef>
#include <string_view>

namespace vant {

/// How deep containers may lie in one another in a property list from outside. The platform's reader recurses once a
/// level; the files that are read here need four.
inline constexpr std::size_t deepestPropertyList = 512;

/// Whether the platform's reader can be given these bytes without running out of stack or memory: XML and old-style
/// text that nests no deeper than allowed, and binary lists that are sound. Says nothing about whether they can be
/// parsed.
[[nodiscard]] bool isPropertyListSafeToParse(std::string_view bytes);

/// How deep elements nest in XML text, at most. Text that is not well formed counts as deep rather than as flat.
[[nodiscard]] std::size_t markupNesting(std::string_view text) noexcept;

/// How deep arrays and dictionaries nest in old-style text, at most.
[[nodiscard]] std::size_t bracketNesting(std::string_view text) noexcept;

/// Whether a binary property list is sound: every object lies inside the file, none contains itself, containers nest no
/// deeper than allowed, and the whole, with shared objects counted as often as they are used, stays within memory.
[[nodiscard]] bool isBinaryPropertyListSound(std::string_view bytes);

} // namespace vant
