#include "base/Paths.hpp"

namespace vant {

namespace {

/// The path without the slashes at its end; "/" stays as it is.
std::string_view withoutTrailingSlashes(std::string_view path) noexcept {
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    return path;
}

/// The extension of a name without slashes together with its full stop; "." of "a.".
std::string_view dottedExtension(std::string_view name) noexcept {
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos || dot == 0 ? std::string_view() : name.substr(dot);
}

} // namespace

std::string_view lastPathComponent(std::string_view path) noexcept {
    path = withoutTrailingSlashes(path);
    const std::size_t slash = path.rfind('/');
    return path == "/" || slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string_view pathExtension(std::string_view path) noexcept {
    std::string_view extension = dottedExtension(lastPathComponent(path));
    extension.remove_prefix(extension.empty() ? 0 : 1);
    return extension;
}

std::string_view deletingPathExtension(std::string_view path) noexcept {
    path = withoutTrailingSlashes(path);
    path.remove_suffix(dottedExtension(lastPathComponent(path)).size());
    return path;
}

std::string_view destinationName(std::string_view address) noexcept {
    return address.substr(address.rfind('/') + 1);
}

} // namespace vant
