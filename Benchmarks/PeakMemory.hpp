#pragma once
#include <cstdlib>
#include <fstream>
#include <string>

namespace vant::bench {

/// The peak of this program's resident memory in KiB. What getrusage() tells includes the process that started it.
[[nodiscard]] inline long peakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:"))
            return std::strtol(line.c_str() + 6, nullptr, 10);
    }
    return 0;
}

} // namespace vant::bench
