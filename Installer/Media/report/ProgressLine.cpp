#include "report/ProgressLine.hpp"

#include "report/Text.hpp"

#include <unistd.h>

#include <cstdio>

namespace vant::media {

ProgressLine::ProgressLine() : isShown_(isatty(STDERR_FILENO) != 0) {}

ProgressLine::~ProgressLine() {
    if (!last_.empty())
        std::fputs("\r\x1b[K", stderr);
}

void ProgressLine::show(const std::string &text) {
    if (!isShown_ || text == last_)
        return;
    last_ = text;
    std::fprintf(stderr, "\r\x1b[K%s", printable(text).c_str());
}

} // namespace vant::media
