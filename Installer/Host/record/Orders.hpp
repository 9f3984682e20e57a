#pragma once
#include <string>
#include <unistd.h>
#include <vector>

namespace vant::host {

/// What whoever started the host writes to it, an order a line.
class Orders {
public:
    /// Reads from standard input, or from another descriptor, which stays the caller's.
    explicit Orders(int descriptor = STDIN_FILENO) : descriptor_(descriptor) {}

    /// The lines that have become whole since the last call, without their ends. Never waits.
    [[nodiscard]] std::vector<std::string> take();

    /// Whether the other end has been closed, which it also is when there is nothing to read from. Never waits.
    [[nodiscard]] bool ended();

private:
    void read();

    int descriptor_;
    bool ended_ = false;
    std::string text_;
};

} // namespace vant::host
