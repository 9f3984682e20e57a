#pragma once
#include <string>

namespace vant::media {

/// One line on a terminal that says how far long work is, and goes with its owner; nothing elsewhere.
class ProgressLine {
public:
    ProgressLine();
    ProgressLine(const ProgressLine &) = delete;
    ProgressLine &operator=(const ProgressLine &) = delete;
    ~ProgressLine();

    /// Replaces what the line says.
    void show(const std::string &text);

private:
    bool isShown_;
    std::string last_;
};

} // namespace vant::media
