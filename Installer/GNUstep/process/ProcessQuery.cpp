#include <sys/sysctl.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <string>

namespace {

/// The parent's id from /proc/PID/stat, 0 when there is no such process. The command name, in brackets, may hold
/// anything, so the fields are counted from its last bracket.
pid_t parentProcess(pid_t pid) {
    std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
    const std::string text{std::istreambuf_iterator<char>(stat), {}};
    const auto bracket = text.rfind(')');
    if (bracket == std::string::npos || bracket + 4 >= text.size())
        return 0;
    return static_cast<pid_t>(std::strtol(text.c_str() + bracket + 4, nullptr, 10));
}

} // namespace

// NOLINTNEXTLINE(readability-non-const-parameter): the platform declares it so.
int sysctl(int *name, unsigned int nameLength, void *oldValue, size_t *oldLength, void * /*newValue*/,
           size_t /*newLength*/) {
    if (nameLength != 4 || name[0] != CTL_KERN || name[1] != KERN_PROC || name[2] != KERN_PROC_PID) {
        errno = ENOENT;
        return -1;
    }
    if (oldValue == nullptr || *oldLength < sizeof(kinfo_proc)) {
        errno = ENOMEM;
        return -1;
    }
    const pid_t pid = name[3];
    const pid_t parent = pid > 0 ? parentProcess(pid) : 0;
    if (parent == 0 && pid != 1) {
        *oldLength = 0;
        return 0;
    }
    kinfo_proc record{};
    record.kp_proc.p_pid = pid;
    record.kp_eproc.e_ppid = parent;
    std::memcpy(oldValue, &record, sizeof record);
    *oldLength = sizeof record;
    return 0;
}
