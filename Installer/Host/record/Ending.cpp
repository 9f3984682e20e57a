#include "Ending.hpp"

#include "DownloadErrors.hpp"

namespace vant::host {

static constexpr double patience = 1.0;
static constexpr double stuckAfter = 10.0;

static std::string withCode(const std::string &words, int code) {
    return words + " (" + std::to_string(code) + ")";
}

/// The ends that the pane tells of, the good one first.
static std::optional<Ending> toldEnding(const Signs &signs) {
    if (signs.continued)
        return Ending{EndingKind::Continued, "the pane told the host to go on"};
    if (signs.refused)
        return Ending{EndingKind::Refused, "administrator rights were refused, nothing was installed"};
    if (signs.packageFailed)
        return Ending{EndingKind::PackageFailed, "a package failed"};
    return std::nullopt;
}

/// A right that was granted at the start may have expired when a package is launched.
static Ending launchEnding(int error) {
    constexpr int denied = -60005;
    constexpr int cancelled = -60006;
    if (error == denied || error == cancelled)
        return {EndingKind::RefusedLater, withCode("administrator rights were refused for a further package", error),
                error};
    return {EndingKind::NotLaunched, withCode("the package installer could not be started", error), error};
}

std::optional<Ending> ending(const Signs &signs) {
    if (auto told = toldEnding(signs))
        return told;
    if (signs.launchError != 0)
        return launchEnding(signs.launchError);
    if (signs.cancelled)
        return Ending{EndingKind::Cancelled, "the user ended the installation"};
    if (signs.secondsSinceButton2 && *signs.secondsSinceButton2 >= patience)
        return Ending{EndingKind::SetAside,
                      "components were set aside on the desktop for the user, nothing was installed"};
    if (signs.downloadError != 0 && !signs.installing && signs.secondsStill >= stuckAfter)
        return Ending{EndingKind::Stuck,
                      "stuck after a failed download: " +
                          withCode(std::string(downloadErrorWords(signs.downloadError)), signs.downloadError),
                      signs.downloadError};
    if (signs.seconds >= signs.timeOut)
        return Ending{EndingKind::TimedOut, "no end after " + std::to_string(static_cast<long>(signs.timeOut)) + " s"};
    return std::nullopt;
}

bool isStill(const Signs &signs) noexcept {
    return signs.secondsStill >= signs.stillAfter;
}

} // namespace vant::host
