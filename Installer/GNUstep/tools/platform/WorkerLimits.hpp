#pragma once
#include <sys/types.h>

#include <cstddef>

namespace vant::tools {

/// What a worker process is held to.
struct WorkerLimits {
    pid_t parent = 0;          ///< it ends with this process
    std::size_t memory = 0;    ///< bytes
    int outOfMemoryStatus = 0; ///< its exit status where the system cannot refuse the memory itself
};

/// Holds this process to the limits from here on. It is killed when the parent ends, or has ended. More memory is
/// refused (std::bad_alloc, or a null pointer) or, where the system has no such limit, ends the process soon after it
/// was taken. Once a process, which has no other thread.
void holdTo(const WorkerLimits &limits);

/// Lifts the memory limit once no foreign bytes are read any more.
void liftMemoryLimit();

} // namespace vant::tools
