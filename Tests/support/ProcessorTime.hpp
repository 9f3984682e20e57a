#pragma once

namespace vant::test {

/// Seconds that a processor has worked so far, whatever else runs on the machine: for the calling thread, and for all
/// threads of this process.
[[nodiscard]] double threadSeconds();
[[nodiscard]] double processSeconds();

} // namespace vant::test
