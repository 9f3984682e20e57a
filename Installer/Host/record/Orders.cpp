#include "Orders.hpp"

#include <array>
#include <poll.h>

namespace vant::host {
namespace {

bool isReadable(int descriptor) {
    pollfd input = {.fd = descriptor, .events = POLLIN, .revents = 0};
    return poll(&input, 1, 0) > 0;
}

} // namespace

std::vector<std::string> Orders::take() {
    read();
    std::vector<std::string> lines;
    for (auto end = text_.find('\n'); end != std::string::npos; end = text_.find('\n')) {
        lines.push_back(text_.substr(0, end));
        text_.erase(0, end + 1);
    }
    return lines;
}

bool Orders::ended() {
    read();
    return ended_;
}

void Orders::read() {
    std::array<char, 256> bytes{};
    while (!ended_ && isReadable(descriptor_)) {
        const auto count = ::read(descriptor_, bytes.data(), bytes.size());
        ended_ = count <= 0;
        if (count > 0)
            text_.append(bytes.data(), static_cast<std::size_t>(count));
    }
}

} // namespace vant::host
