#pragma once
#include <optional>
#include <string>

namespace vant::host {

/// What the host has seen of the pane so far.
struct Signs {
    bool refused = false;                      ///< the pane says that it is not valid
    bool continued = false;                    ///< the pane told the host to go on
    bool packageFailed = false;                ///< the pane announced a failed package
    bool cancelled = false;                    ///< the user pressed Cancel or closed the window
    std::optional<double> secondsSinceButton2; ///< since button 2 was last enabled; absent while it is disabled
    double seconds = 0;                        ///< since the start
    double timeOut = 0;                        ///< longest run
};

/// The end of a run: whether the host goes on to its next page, and why in words.
struct Ending {
    bool continued = false;
    std::string reason;
};

/// How the run has ended; absent while it goes on. A pane that enables button 2 and does not ask to go on has set
/// something aside and leaves the rest to the user: that ends a run after a second, which the pane's own end never
/// takes.
[[nodiscard]] std::optional<Ending> ending(const Signs &signs);

} // namespace vant::host
