#include "check/Checks.hpp"

#include <algorithm>

namespace vant::media {

std::string_view severityName(Severity severity) noexcept {
    switch (severity) {
    case Severity::Error:
        return "error";
    case Severity::Warning:
        return "warning";
    case Severity::Note:
        break;
    }
    return "note";
}

Findings check(const Survey &found, const Plan &plan, const Readers &readers) {
    Findings findings;
    checkSelection(found.selection, Flow::Media, findings);
    checkSettings(found, findings);
    if (found.web)
        checkSelection(*found.web, Flow::Web, findings);
    checkDownloads(found, plan, readers, findings);
    checkHostPackages(found, plan, findings);
    checkPackages(plan, readers, findings);
    checkProfiles(found, plan, findings);
    checkSlides(found, findings);
    std::ranges::stable_sort(findings, {}, &Finding::severity);
    return findings;
}

} // namespace vant::media
