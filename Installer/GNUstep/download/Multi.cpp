#include "GNUstep/download/Multi.hpp"

#include "GNUstep/download/platform/OpenDescriptors.hpp"

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <mutex>
#include <set>

namespace vant {
namespace {

std::set<int> openDescriptors() {
    std::set<int> numbers;
    for (const auto &entry : std::filesystem::directory_iterator(descriptorFolder))
        numbers.insert(std::atoi(entry.path().filename().c_str()));
    // The listing includes the descriptor that it was read by, which is closed by now.
    std::erase_if(numbers, [](int number) { return ::fcntl(number, F_GETFD) < 0; });
    return numbers;
}

} // namespace

MultiHandle makeMultiHandle() {
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
    // The library creates its wake-up pair without close-on-exec, and does not tell which descriptors those are.
    const auto before = openDescriptors();
    MultiHandle multi(curl_multi_init());
    for (const int number : openDescriptors())
        if (!before.contains(number))
            ::fcntl(number, F_SETFD, FD_CLOEXEC);
    return multi;
}

} // namespace vant
