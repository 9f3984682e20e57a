#pragma once
#include <cstddef>
#include <sys/types.h>

/// The kernel's process table, as far as one process's record can be asked for by its id.

#define CTL_KERN 1
#define KERN_PROC 14
#define KERN_PROC_PID 1

struct extern_proc {
    pid_t p_pid;
};

struct eproc {
    pid_t e_ppid; ///< the parent's process id
};

struct kinfo_proc {
    struct extern_proc kp_proc;
    struct eproc kp_eproc;
};

extern "C" {

/// Answers the query {CTL_KERN, KERN_PROC, KERN_PROC_PID, pid}. A process id that does not exist is no error: the
/// length becomes 0. Any other query, or a buffer too small, fails with -1 and `errno`.
int sysctl(int *name, unsigned int nameLength, void *oldValue, size_t *oldLength, void *newValue, size_t newLength);

} // extern "C"
