#pragma once

namespace vant {

/// Ends the process with status 1 when it has spent `seconds` of processor time without a call of `fed`: some damaged
/// archives make the reading library turn in a circle, where nothing else can stop it. Processor time, because a slow
/// disk or a sleeping machine is no circle. One for the process; main thread.
class Watchdog {
public:
    /// `lastWords` is written to standard error before the end, `lastLine` to standard output when it is not empty;
    /// both must outlive the watchdog.
    Watchdog(int seconds, const char *lastWords, const char *lastLine = "");
    Watchdog(const Watchdog &) = delete;
    Watchdog &operator=(const Watchdog &) = delete;
    ~Watchdog();

    /// Something was achieved: the time starts again.
    void fed() const;

private:
    int seconds_;
};

} // namespace vant
