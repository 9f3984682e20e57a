#pragma once
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vant::tools {

/// Why an archive or a package could not be expanded, as one sentence for the user. Never crosses a C callback.
class ExpansionError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The error for a failed system call on a file: "NAME: No space left on device".
[[nodiscard]] inline ExpansionError systemError(const std::string &name, int code) {
    ExpansionError error(name + ": " + std::strerror(code));
    return error;
}

/// A name for a message, cut when an archive makes it longer than anyone would read.
[[nodiscard]] inline std::string shortened(std::string_view name) {
    constexpr std::size_t longest = 200;
    return name.size() <= longest ? std::string(name) : std::string(name.substr(0, longest)) + "…";
}

} // namespace vant::tools
