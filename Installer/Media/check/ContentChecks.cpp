#include "base/Paths.hpp"
#include "check/Checks.hpp"
#include "plan/Contents.hpp"

#include <algorithm>

namespace vant::media {
namespace {

std::string quoted(const std::string &text) {
    return "\"" + text + "\"";
}

/// What keeps the archive from being expanded; false when nothing does.
bool addExpansionFault(const SiteArchive &archive, const std::string &subject, Findings &findings) {
    const auto add = [&](const char *code, const std::string &message) {
        findings.push_back({Severity::Error, code, subject, message});
        return true;
    };
    if (archive.listed.isTooLarge)
        return add("archive-too-large", "the archive was not expanded: " + archive.listed.fault);
    if (!archive.listed.outside.empty())
        return add("archive-escape", "the entry " + quoted(archive.listed.outside) +
                                         " leads out of the folder, so that nothing of the archive is expanded");
    const std::string &fault = archive.listed.fault.empty() ? archive.content.fault : archive.listed.fault;
    return !fault.empty() && add("archive-damaged", "the archive cannot be expanded: " + fault);
}

std::string namesThatInstall() {
    std::string names;
    for (const std::string &name : installedNames())
        names += (names.empty() ? "" : ", ") + name;
    return names;
}

void addNested(const Content &content, const std::string &subject, Findings &findings) {
    if (content.outcome == Content::Outcome::Installed && !content.inside.empty())
        findings.push_back({Severity::Warning, "nested-package", subject,
                            "it lies inside " + quoted(content.inside) + ", and is installed all the same"});
}

void addOutcome(const Content &content, const std::string &subject, Findings &findings) {
    const bool isPackage = pathExtension(content.item) == "pkg";
    if (content.outcome == Content::Outcome::SetAside && isPackage)
        findings.push_back({Severity::Note, "package-set-aside", subject,
                            "it is not installed: " + content.reason + " (" + namesThatInstall() + ")"});
    if (content.outcome == Content::Outcome::Dropped)
        findings.push_back(
            {Severity::Warning, "package-dropped", subject, "it is taken off the list again: " + content.reason});
    if (content.outcome == Content::Outcome::PassedOver && !isPackage && content.inside.empty() &&
        pathExtension(content.item) != "app")
        findings.push_back({Severity::Warning, "package-passed-over", subject, "it is passed over: " + content.reason});
}

/// An archive in an archive is never expanded.
void addArchivesAmong(const std::vector<std::string> &items, const std::string &subject, Findings &findings) {
    for (const std::string &item : items) {
        const std::string_view extension = pathExtension(item);
        if (extension == "zip" || extension == "cpio" || extension == "cpgz" || extension == "dmg")
            findings.push_back({Severity::Warning, "nested-archive", std::string(subject).append(": ").append(item),
                                "an archive or disk image in an archive is passed over"});
    }
}

} // namespace

void checkSiteContent(const SiteArchive &archive, const Plan &plan, const Download &download, Findings &findings) {
    const std::string subject = *download.address;
    if (addExpansionFault(archive, subject, findings))
        return;
    for (std::size_t i = 0; i < archive.content.packages.size(); ++i)
        addPackageState(archive.content.packages[i], subject + ": " + download.packages[i], findings);
    for (const Content &content : contentsOf(archive.content.items, plan, download.file)) {
        addNested(content, subject + ": " + content.item, findings);
        addOutcome(content, subject + ": " + content.item, findings);
    }
    // Inside a package, archives are the package's own.
    std::vector<std::string> plain;
    std::ranges::copy_if(archive.content.items, std::back_inserter(plain), [](const std::string &item) {
        return item.find(".pkg/") == std::string::npos && item.find(".app/") == std::string::npos;
    });
    addArchivesAmong(plain, subject, findings);
    if (download.packages.empty() && download.setAside.empty())
        findings.push_back(
            {Severity::Warning, "archive-without-package", subject,
             "nothing in the archive is installed or set aside; these names install: " + namesThatInstall()});
}

} // namespace vant::media
