#include "check/Checks.hpp"

#include <algorithm>

namespace vant::media {
namespace {

using Fault = Fetched::Fault;

std::string quoted(const std::string &text) {
    return "\"" + text + "\"";
}

/// What an answer is about, and where findings go.
struct Place {
    std::string subject;
    Findings &findings;
    void add(Severity severity, const char *code, const std::string &message) const {
        findings.push_back({severity, code, subject, message});
    }
};

void addFailure(const Fetched &fetched, const Place &place) {
    const auto error = [&](const char *code, const std::string &message) { place.add(Severity::Error, code, message); };
    const bool isShort = fetched.announced > 0 && fetched.received < static_cast<std::uint64_t>(fetched.announced);
    if (fetched.error == DownloadError::tooManyRedirects)
        return error("redirect-circle", "it leads on and on, and is given up after " +
                                            std::to_string(fetched.redirects.size()) + " redirects");
    if (fetched.error == DownloadError::unsupportedAddress && !fetched.redirects.empty())
        return error("redirect-refused", "it leads to " + quoted(fetched.redirects.back()) +
                                             ", which is not followed: no redirect leads to a protocol that protects "
                                             "less, or to anything but a server");
    if (fetched.error == DownloadError::connectionLost && isShort)
        return error("length-differs", std::to_string(fetched.announced) +
                                           " bytes are announced, and the answer ends "
                                           "after " +
                                           std::to_string(fetched.received));
    error("fetch-failed", "it cannot be fetched: " + errorWords(fetched.error));
}

/// Whether the answer is worth a look at what it brought.
bool addFault(const Fetched &fetched, const Place &place) {
    switch (fetched.fault) {
    case Fault::None:
        break;
    case Fault::Failed:
        addFailure(fetched, place);
        return false;
    case Fault::TooSlow:
        place.add(Severity::Error, "fetch-slow", "the server sends fewer than 1,000 bytes a second");
        return false;
    case Fault::TooLarge:
        place.add(Severity::Error, "fetch-too-large", "the answer is larger than is asked for; see --largest");
        return false;
    }
    if (hasArrived(fetched))
        return true;
    place.add(Severity::Error, "http-status",
              "the server answers with status " + std::to_string(fetched.status) +
                  ", and the pane takes what comes with it for the archive");
    return false;
}

void addManners(const Fetched &fetched, const Place &place) {
    if (!fetched.redirects.empty())
        place.add(Severity::Note, "redirect",
                  "it is fetched from " + quoted(fetched.redirects.back()) + ", after " +
                      std::to_string(fetched.redirects.size()) + " redirect(s)");
    if (!fetched.encoding.empty() && fetched.encoding != "identity")
        place.add(Severity::Warning, "content-encoding",
                  "the server encodes the answer once more (" + fetched.encoding +
                      "), so that another length arrives than is announced, and a compressed archive may arrive plain");
    if (fetched.announced < 0 && fetched.status != 0)
        place.add(Severity::Warning, "length-missing", "no length is announced, so that no progress is shown");
}

void addForm(const SiteArchive &archive, const Download &download, const Place &place) {
    const std::string is(contentName(archive.kind));
    if (archive.kind == ContentKind::Empty)
        return place.add(Severity::Error, "archive-empty", "the answer has no content");
    if (archive.kind == ContentKind::WebPage)
        return place.add(Severity::Error, "web-page", "a web page arrives in place of the archive");
    place.add(Severity::Error, "archive-ending",
              "by the name " + quoted(download.file) + " it is expanded as a " +
                  (download.archive == ArchiveKind::Zip ? "zip" : "cpio") + ", but it is " + is +
                  "; only exactly \".zip\" stands for a zip");
}

void checkArchive(const SiteArchive &archive, const Plan &plan, const Download &download, Findings &findings) {
    if (!archive.isFetched)
        return;
    const Place place{*download.address, findings};
    if (!addFault(archive.fetched, place))
        return;
    addManners(archive.fetched, place);
    if (!suits(archive.kind, download.archive))
        return addForm(archive, download, place);
    checkSiteContent(archive, plan, download, findings);
}

/// The kind that the selection gives for the archive of that name.
std::optional<std::string> kindOf(const Survey &found, const Plan &plan, const std::string &archive) {
    for (std::size_t i = 0; i < plan.downloads.size(); ++i)
        if (plan.downloads[i].file == archive)
            return found.input.web[i].kind;
    return std::nullopt;
}

/// What the media hold of the same kind as a package of the site.
void checkAgainstMedia(const Survey &found, const Plan &plan, Findings &findings) {
    for (const DroppedPackage &dropped : plan.dropped)
        if (dropped.rule == DropRule::WebVersionWins)
            findings.push_back({Severity::Note, "web-version-wins", dropped.package.path.value_or(""),
                                "the site brings a package of this name, which is installed instead"});
    for (const PlannedPackage &web : plan.packages) {
        if (web.origin != Origin::Web)
            continue;
        const auto kind = kindOf(found, plan, web.archive);
        for (const PlannedPackage &other : plan.packages)
            if (other.origin == Origin::MergedFromMedia && kind && other.component == kind)
                findings.push_back({Severity::Warning, "installed-twice", other.path.value_or(""),
                                    "the site brings " + quoted(packageName(web)) + " for " + quoted(*kind) +
                                        ", too; since the file names differ, both are installed"});
    }
}

void addRoom(const Site &site, Findings &findings) {
    std::uint64_t archives = 0;
    std::uint64_t expanded = 0;
    for (const SiteArchive &archive : site.archives) {
        archives += archive.fetched.received;
        expanded += archive.listed.bytes;
    }
    constexpr std::uint64_t megabyte = 1'000'000;
    findings.push_back({Severity::Note, "space-needed", site.address,
                        "the user's temporary folder needs " +
                            std::to_string((archives + expanded + megabyte - 1) / megabyte) +
                            " MB: " + std::to_string(archives) + " bytes of archives, " + std::to_string(expanded) +
                            " bytes of what they hold"});
}

} // namespace

void checkSite(const Site &site, const Survey &found, const Plan &plan, Findings &findings) {
    if (site.isSelectionFetched && addFault(site.selection, {found.web->file.path, findings}))
        addManners(site.selection, {found.web->file.path, findings});
    for (std::size_t i = 0; i < plan.downloads.size(); ++i)
        checkArchive(site.archives[i], plan, plan.downloads[i], findings);
    checkAgainstMedia(found, plan, findings);
    addRoom(site, findings);
}

} // namespace vant::media
