#pragma once
#include <string>

namespace vant::media {

/// What is wrong with a package; `None` when the whole of it can be read.
enum class PackageFault { None, Missing, NotReadable, SpecialFile, Empty, NoPackage, Damaged };

struct PackageState {
    PackageFault fault = PackageFault::None;
    std::string reason; ///< the tool's own words, or the item at fault
};

/// Reads a package through as the package tool does, every checksum included, without writing anything. Never hangs:
/// what does not come to an end counts as damaged. Main thread.
[[nodiscard]] PackageState readPackage(const std::string &path);

} // namespace vant::media
