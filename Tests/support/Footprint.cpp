#include "Footprint.hpp"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>

namespace fs = std::filesystem;

namespace vant::test {
namespace {

std::size_t itemsIn(const fs::path &folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

std::size_t statusValue(std::string_view name) {
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word && word != name) {
    }
    std::size_t value = 0;
    status >> value;
    return value;
}

/// The kernel lists a child with the thread that started it, or with another one once that thread has ended.
std::size_t childCount() {
    std::size_t count = 0;
    for (const auto &task : fs::directory_iterator("/proc/self/task")) {
        std::ifstream children(task.path() / "children");
        count += static_cast<std::size_t>(
            std::distance(std::istream_iterator<long>(children), std::istream_iterator<long>()));
    }
    return count;
}

} // namespace

Footprint footprint() {
    return {.memory = statusValue("RssAnon:"),
            .descriptors = itemsIn("/proc/self/fd"),
            .threads = statusValue("Threads:"),
            .children = childCount()};
}

std::ostream &operator<<(std::ostream &out, const Footprint &footprint) {
    return out << footprint.memory << " KiB of memory, " << footprint.descriptors << " descriptors, "
               << footprint.threads << " threads, " << footprint.children << " children";
}

} // namespace vant::test
