#pragma once
#include <cstring>
#include <stdexcept>
#include <string>

namespace vant {

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

} // namespace vant
