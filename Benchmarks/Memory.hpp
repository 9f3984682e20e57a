#pragma once
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>

namespace vant::bench {

/// A figure of the kernel's about this program's memory in KiB, by its name with the colon; 0 when there is none.
[[nodiscard]] inline long memoryFigure(std::string_view name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name))
            return std::strtol(line.c_str() + name.size(), nullptr, 10);
    }
    return 0;
}

/// The peak of this program's resident memory in KiB. What getrusage() tells includes the process that started it.
[[nodiscard]] inline long peakMemory() {
    return memoryFigure("VmHWM:");
}

/// This program's resident memory now, in KiB.
[[nodiscard]] inline long residentMemory() {
    return memoryFigure("VmRSS:");
}

} // namespace vant::bench
