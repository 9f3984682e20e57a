#include "Notices.hpp"

#include "DownloadErrors.hpp"

namespace vant::host {

static const char *keyOf(DownloadFault fault) {
    switch (fault) {
    case DownloadFault::Connection:
        return "StuckConnection";
    case DownloadFault::Disk:
        return "StuckDisk";
    case DownloadFault::Answer:
        break;
    }
    return "StuckAnswer";
}

std::optional<Notice> noticeOf(const Ending &ending) {
    switch (ending.kind) {
    case EndingKind::Refused:
        return Notice{"Refused"};
    case EndingKind::RefusedLater:
        return Notice{"RefusedLater"};
    case EndingKind::NotStarted:
        return Notice{"NotStarted"};
    case EndingKind::NotLaunched:
        return Notice{"NotLaunched", ending.code};
    case EndingKind::PackageFailed:
        return Notice{"PackageFailed"};
    case EndingKind::SetAside:
        return Notice{"SetAside"};
    case EndingKind::Stuck:
        return Notice{keyOf(downloadFault(ending.code)), ending.code};
    case EndingKind::TimedOut:
        return Notice{"TimedOut"};
    case EndingKind::Continued:
    case EndingKind::Cancelled:
        break;
    }
    return std::nullopt;
}

std::optional<Notice> noticeOf(const Signs &signs) {
    if (isStill(signs))
        return Notice{"Still"};
    return std::nullopt;
}

std::size_t packageAtWork(bool started, std::size_t ended, std::size_t packages) noexcept {
    return started && ended < packages ? ended + 1 : 0;
}

} // namespace vant::host
