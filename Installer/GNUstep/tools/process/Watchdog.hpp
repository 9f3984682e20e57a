#pragma once

namespace vant::tools {

/// Ends the process with a status of its own when it has spent `seconds` of CPU time without a call of `progressed`:
/// some damaged archives make the reading library loop, and nothing else can stop it there. CPU time, because a slow
/// disk or a sleeping machine is no loop. One for the process.
class Watchdog {
public:
    Watchdog(int seconds, int status);
    Watchdog(const Watchdog &) = delete;
    Watchdog &operator=(const Watchdog &) = delete;
    ~Watchdog();

    /// Work was done (something was written, not just read): the time starts again.
    void progressed() const;

private:
    int seconds_;
};

} // namespace vant::tools
