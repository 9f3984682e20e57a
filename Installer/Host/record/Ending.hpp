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
    bool installing = false;                   ///< the pane has packages, and works through them
    int launchError = 0;                       ///< of the launch of a package's installer; 0: none
    int downloadError = 0;                     ///< of the last download that failed; 0: none
    std::optional<double> secondsSinceButton2; ///< since button 2 was last enabled; absent while it is disabled
    double secondsStill = 0;                   ///< since something last changed
    double stillAfter = 60;                    ///< what the user is to be told as stillness
    double seconds = 0;                        ///< since the start
    double timeOut = 0;                        ///< longest run
};

enum class EndingKind {
    Continued,
    Refused,
    RefusedLater,
    NotLaunched,
    PackageFailed,
    Cancelled,
    SetAside,
    Stuck,
    TimedOut,
    NotStarted
};

/// The end of a run, with its reason in words.
struct Ending {
    EndingKind kind = EndingKind::NotStarted;
    std::string reason;
    int code = 0; ///< the error that ended the run; 0: none

    /// True when the host goes on to its next page.
    [[nodiscard]] bool continued() const noexcept { return kind == EndingKind::Continued; }
};

/// How the run has ended; absent while it goes on. A pane that enables button 2 and does not ask to go on has set
/// something aside and leaves the rest to the user: that ends a run after a second, which the pane's own end never
/// takes. A pane whose download has failed and that has done nothing since will do nothing more.
[[nodiscard]] std::optional<Ending> ending(const Signs &signs);

/// True when nothing has happened for so long that the user should be told.
[[nodiscard]] bool isStill(const Signs &signs) noexcept;

} // namespace vant::host
