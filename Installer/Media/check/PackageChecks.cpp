#include "check/Checks.hpp"
#include "check/Names.hpp"
#include "install/profiles/ColourProfiles.hpp"
#include "plan/Collisions.hpp"
#include "selection/ComponentCatalogue.hpp"

#include <algorithm>
#include <set>

namespace vant::media {
namespace {

std::string quoted(const std::string &text) {
    return "\"" + text + "\"";
}

std::string messageOf(const PackageState &state) {
    switch (state.fault) {
    case PackageFault::None:
        break;
    case PackageFault::Missing:
        return "the package is missing";
    case PackageFault::NotReadable:
        return "the package cannot be read: " + state.reason;
    case PackageFault::SpecialFile:
        return state.reason + " is a pipe, a device or a socket";
    case PackageFault::Empty:
        return "the package is empty";
    case PackageFault::NoPackage:
        return "this is no package that the system's tool takes: " + state.reason;
    case PackageFault::Damaged:
        return "the package is damaged: " + state.reason;
    }
    return "";
}

const char *codeOf(PackageFault fault) noexcept {
    switch (fault) {
    case PackageFault::None:
        break;
    case PackageFault::Missing:
        return "package-missing";
    case PackageFault::NotReadable:
        return "package-unreadable";
    case PackageFault::SpecialFile:
        return "package-special-file";
    case PackageFault::Empty:
        return "package-empty";
    case PackageFault::NoPackage:
        return "package-form";
    case PackageFault::Damaged:
        return "package-damaged";
    }
    return "";
}

bool hasOrigin(const Plan &plan, Origin origin) {
    return std::ranges::find(plan.packages, origin, &PlannedPackage::origin) != plan.packages.end();
}

} // namespace

void addPackageState(const PackageState &state, const std::string &subject, Findings &findings) {
    if (state.fault != PackageFault::None)
        findings.push_back({Severity::Error, codeOf(state.fault), subject, messageOf(state)});
}

void checkHostPackages(const Survey &found, const Plan &plan, Findings &findings) {
    const std::string folder = found.media + "/Resources/";
    if (!found.input.uninstaller && hasOrigin(plan, Origin::Uninstaller))
        findings.push_back({Severity::Error, "uninstaller-missing", folder + std::string(uninstallerPackage),
                            "the host has no uninstaller, and its record has no path"});
    if (!found.input.manual && hasOrigin(plan, Origin::Manual))
        findings.push_back({Severity::Error, "manual-missing", folder + "Manual.pkg",
                            "a manual is wanted and the host has none, and its record has no path"});
    else if (found.input.manual && !hasOrigin(plan, Origin::Manual))
        findings.push_back({Severity::Note, "manual-not-wanted", *found.input.manual,
                            "the host has a manual, which the settings do not ask for"});
    if (!found.input.secondScanDriver && hasOrigin(plan, Origin::SecondScanDriver))
        findings.push_back({Severity::Error, "second-scan-driver-missing", found.settings.file.path,
                            "a scan driver is selected and the settings name no second one, whose record has no path"});
}

void checkPackageNames(const Plan &plan, Findings &findings) {
    for (const Collision &collision : collisionsOf(plan)) {
        if (collision.kind != Collision::Kind::PackageName)
            continue;
        const bool isNamed = !collision.name.empty();
        const std::string which = isNamed ? " packages are called " + quoted(collision.name) : " packages lack a path";
        findings.push_back({Severity::Error, isNamed ? "same-name" : "records-without-path", collision.name,
                            std::to_string(collision.count) + which +
                                ": they share one outcome, the list never completes, and the host ends"});
    }
}

void checkPackages(const Plan &plan, const Readers &readers, Findings &findings) {
    std::set<std::string> seen;
    for (const PlannedPackage &package : plan.packages) {
        if (!package.path || package.origin == Origin::Web || !seen.insert(*package.path).second)
            continue;
        addPackageState(readers.package(*package.path), *package.path, findings);
    }
}

void checkProfiles(const Survey &found, const Plan &plan, Findings &findings) {
    const bool wanted = std::ranges::any_of(
        plan.packages, [](const PlannedPackage &package) { return needsColourProfiles(packageName(package)); });
    if (!wanted)
        return;
    const ProfileSource &source = found.profiles;
    const auto add = [&](Severity severity, const char *code, const std::string &subject, const std::string &message) {
        findings.push_back({severity, code, subject, message});
    };
    if (source.folder.empty())
        return add(Severity::Warning, "profiles-missing", found.media + "/MAC_Installer",
                   "a package calls for colour profiles, and the media have no installer folder to take them from");
    if (!source.isThere)
        return add(Severity::Warning, "profiles-missing", source.folder, "the folder of colour profiles is missing");
    if (!source.isFolder)
        return add(Severity::Warning, "profiles-no-folder", source.folder,
                   "a file lies where the folder of colour profiles is looked for");
    if (source.profiles.empty() && source.archives.empty())
        add(Severity::Warning, "profiles-empty", source.folder, "the folder holds neither profiles (.icc) nor a zip");
    if (source.archives.size() > 1)
        add(Severity::Warning, "profiles-several-zips", source.folder,
            "the folder holds " + std::to_string(source.archives.size()) +
                " zips, and only the one that the system lists last is expanded");
    for (const std::string &archive : source.archives)
        if (isReadOtherwiseByShell(archive))
            add(Severity::Error, "shell-name", source.folder + archive,
                "the name passes through a shell, which reads it otherwise");
}

} // namespace vant::media
