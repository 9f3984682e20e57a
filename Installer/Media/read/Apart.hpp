#pragma once
#include <functional>
#include <string>

namespace vant::media {

/// How work in a process of its own ended.
struct ApartResult {
    std::string fault;  ///< a sentence when it came to no end: it was stuck, needed too much memory, or crashed
    std::string answer; ///< otherwise
};

/// Says that the work goes on; called by the work itself now and then.
using Alive = std::function<void()>;

/// Does the work in a child process with little memory and gives its answer, so that whatever it reads can neither
/// crash nor hold up this one. The work sees a copy of everything. Throws std::runtime_error when this process is asked
/// to end meanwhile. Main thread.
[[nodiscard]] ApartResult runApart(const std::function<std::string(const Alive &)> &work);

} // namespace vant::media
