#pragma once
#include <string_view>

namespace vant {

/// Has a loaded library call another function wherever it would call one that it imports. `library` is part of its
/// file's name. False when no such library is loaded, or when it imports no such function. At load, before other
/// threads call it.
bool replaceImport(std::string_view library, std::string_view function, void *replacement);

} // namespace vant
