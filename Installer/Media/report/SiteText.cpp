#include "report/Text.hpp"

#include "plan/Contents.hpp"

namespace vant::media {
namespace {

std::string contentText(const Content &content) {
    std::string text = "      " + printable(content.item) + ": " + std::string(outcomeName(content.outcome));
    if (!content.reason.empty())
        text += ", " + content.reason;
    return text + "\n";
}

std::string answerText(const SiteArchive &archive) {
    if (!archive.isFetched)
        return "no address";
    const Fetched &fetched = archive.fetched;
    const std::string status = fetched.status == 0 ? "" : "status " + std::to_string(fetched.status) + ", ";
    return status + std::to_string(fetched.received) + " bytes, " + std::to_string(archive.listed.bytes) + " expanded";
}

} // namespace

std::string siteText(const Report &report) {
    std::string text;
    for (std::size_t i = 0; report.site && i < report.plan.downloads.size(); ++i) {
        const Download &download = report.plan.downloads[i];
        const SiteArchive &archive = report.site->archives[i];
        text += printable(download.address.value_or("(no address)")) + "\n    → " + printable(download.file) + ", " +
                answerText(archive) + "\n";
        for (const Content &content : contentsOf(archive.content.items, report.plan, download.file))
            text += contentText(content);
    }
    return text;
}

} // namespace vant::media
