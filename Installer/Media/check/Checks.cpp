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

Findings check(const Survey &found, const Plan &plan, const Site *site, const Readers &readers) {
    Findings findings;
    const bool hasMedia = !found.media.empty();
    if (hasMedia) {
        checkSelection(found.selection, Flow::Media, findings);
        checkSettings(found, findings);
    }
    // What came in place of the site's own list says nothing about it.
    if (found.web && (site == nullptr || !site->isSelectionFetched || hasArrived(site->selection)))
        checkSelection(*found.web, Flow::Web, findings);
    checkDownloads(found, plan, readers, findings);
    if (site != nullptr)
        checkSite(*site, found, plan, findings);
    checkPackageNames(plan, findings);
    if (hasMedia) {
        checkHostPackages(found, plan, findings);
        checkPackages(plan, readers, findings);
        checkProfiles(found, plan, findings);
        checkSlides(found, findings);
    }
    std::ranges::stable_sort(findings, {}, &Finding::severity);
    return findings;
}

} // namespace vant::media
