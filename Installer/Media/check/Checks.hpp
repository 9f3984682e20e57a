#pragma once
#include "check/Finding.hpp"
#include "read/ArchiveReading.hpp"
#include "read/Survey.hpp"
#include "site/Visit.hpp"

#include <functional>

namespace vant::media {

/// What opens packages and archives; takes long.
struct Readers {
    std::function<PackageState(const std::string &path)> package;
    std::function<ExpansionState(const std::string &archive, const Download &download)> archive;
};

/// Each looks at one side of what was found, and adds what is to be said about it.
void checkSelection(const SelectionFile &selection, Flow flow, Findings &findings);
void checkSettings(const Survey &found, Findings &findings);
void checkHostPackages(const Survey &found, const Plan &plan, Findings &findings);
void checkPackages(const Plan &plan, const Readers &readers, Findings &findings);
void checkProfiles(const Survey &found, const Plan &plan, Findings &findings);
void checkSlides(const Survey &found, Findings &findings);
void checkDownloads(const Survey &found, const Plan &plan, const Readers &readers, Findings &findings);

void checkPackageNames(const Plan &plan, Findings &findings);
void checkSite(const Site &site, const Survey &found, const Plan &plan, Findings &findings);
/// What an archive of a site holds; its subject is the address.
void checkSiteContent(const SiteArchive &archive, const Plan &plan, const Download &download, Findings &findings);

/// What is wrong with a package, if anything.
void addPackageState(const PackageState &state, const std::string &subject, Findings &findings);

/// Everything, the most severe first, otherwise in the order above. `site` is null when none was visited.
[[nodiscard]] Findings check(const Survey &found, const Plan &plan, const Site *site, const Readers &readers);

/// What keeps a list from being read, if anything.
void checkList(const ListFile &file, const std::string &what, Severity whenMissing, Findings &findings);

} // namespace vant::media
