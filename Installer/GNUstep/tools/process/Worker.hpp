#pragma once
#include "GNUstep/tools/process/Watchdog.hpp"

#include <functional>
#include <string_view>

namespace vant::tools {

/// How a piece of work ended that was done in a process of its own.
enum class WorkEnd {
    Done,
    Failed,      ///< the work said so itself, and has told why
    Stuck,       ///< it used five seconds of CPU time without progress
    OutOfMemory, ///< it needed more memory than it may use
    Crashed,
    Interrupted, ///< by a signal to this process that asks it to end
};

/// Does work that reads foreign bytes in a child process with little memory and a watchdog, and waits for its end.
/// Whatever a hostile archive does to the reader, this process is left to clean up and to tell of it. The work returns
/// whether it was done. Main thread.
[[nodiscard]] WorkEnd inWorker(const std::function<bool(const Watchdog &)> &work);

/// A sentence without its full stop for an end that the work couldn't tell of itself.
[[nodiscard]] std::string_view sentenceFor(WorkEnd end);

/// Defers requests to end while it exists, for work that must not stop half way.
class Uninterrupted {
public:
    Uninterrupted();
    Uninterrupted(const Uninterrupted &) = delete;
    Uninterrupted &operator=(const Uninterrupted &) = delete;
    ~Uninterrupted();
};

} // namespace vant::tools
