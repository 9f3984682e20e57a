#include "check/Checks.hpp"
#include "check/Names.hpp"
#include "plan/Collisions.hpp"
#include "plan/Contents.hpp"

namespace vant::media {
namespace {

void checkName(const Download &download, const std::string &subject, Findings &findings) {
    const auto add = [&](const char *code, const std::string &message) {
        findings.push_back({Severity::Error, code, subject, message});
    };
    if (download.file.empty())
        return add("download-without-name", "the address ends in a slash or is missing, so that the file has no name");
    if (isReadOtherwiseByShell(download.file))
        add("shell-name", "the name \"" + download.file + "\" passes through a shell, which reads it otherwise");
    if (download.file == download.folder)
        add("download-without-extension",
            "the name has no extension, so that the archive would be expanded into a folder of its own name");
}

void checkAddress(const Download &download, const std::string &subject, Findings &findings) {
    if (download.file.find('?') != std::string::npos)
        findings.push_back({Severity::Warning, "download-query", subject,
                            "the address has a query, which becomes part of the file name"});
    if (download.address && !download.address->starts_with("http://") && !download.address->starts_with("https://"))
        findings.push_back({Severity::Error, "download-address", subject, "the address is neither http nor https"});
}

void checkShared(const Plan &plan, Findings &findings) {
    for (const Collision &collision : collisionsOf(plan)) {
        if (collision.kind == Collision::Kind::PackageName)
            continue;
        const bool isFile = collision.kind == Collision::Kind::DownloadFile;
        findings.push_back({Severity::Error, isFile ? "same-download" : "same-folder", collision.name,
                            std::to_string(collision.count) + " archives are " +
                                (isFile ? "downloaded to" : "expanded into") + " \"" + collision.name + "\""});
    }
}

/// Expands an archive that can be listed, and reads the packages in it.
std::string expansionFault(const std::string &archive, const Download &download, const std::string &subject,
                           const Readers &readers, Findings &findings) {
    const ExpansionState state = readers.archive(archive, download);
    const std::vector<std::string> names = packagesAmong(state.items);
    for (std::size_t i = 0; i < state.packages.size(); ++i)
        addPackageState(state.packages[i], subject + ": " + names[i], findings);
    return state.fault;
}

void checkContent(const Download &download, const std::string &fault, const std::string &subject, bool isLast,
                  Findings &findings) {
    if (!fault.empty())
        findings.push_back({Severity::Error, "archive-damaged", subject, "the archive cannot be expanded: " + fault});
    if (!download.isContentKnown)
        findings.push_back({Severity::Note, "archive-unknown", subject,
                            "the archive does not lie beside the selection, so what it holds is not known"});
    if (download.setAside.empty())
        return;
    const std::string which = "\"" + download.setAside.front() + "\" is set aside on the desktop";
    if (isLast)
        findings.push_back({Severity::Error, "last-archive-set-aside", subject,
                            which + ", and since the archive is the last one, nothing is installed at all"});
    else
        findings.push_back({Severity::Warning, "set-aside", subject, which + " instead of being installed"});
}

} // namespace

void checkDownloads(const Survey &found, const Plan &plan, const Readers &readers, Findings &findings) {
    for (std::size_t i = 0; i < plan.downloads.size(); ++i) {
        const Download &download = plan.downloads[i];
        const std::string subject = download.address.value_or(found.web->file.path);
        checkName(download, subject, findings);
        checkAddress(download, subject, findings);
        std::string fault = found.archiveFaults[i];
        if (fault.empty() && found.archives[i])
            fault = expansionFault(*found.archives[i], download, subject, readers, findings);
        checkContent(download, fault, subject, i + 1 == plan.downloads.size(), findings);
    }
    checkShared(plan, findings);
}

} // namespace vant::media
