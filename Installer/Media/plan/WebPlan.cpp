#include "plan/WebPlan.hpp"

#include "base/Paths.hpp"
#include "install/chain/ChainSteps.hpp"
#include "plan/Contents.hpp"
#include "selection/ComponentCatalogue.hpp"
#include "selection/InstallOrder.hpp"
#include "selection/MediaMerge.hpp"
#include "selection/SmartUpdateFilter.hpp"

namespace vant::media {
namespace {

using Texts = std::vector<std::optional<std::string>>;
using Packages = std::vector<PlannedPackage>;

/// As the pane's working folder is named below the temporary one.
constexpr std::string_view downloadFolder = "Vantrel/Download/";

Texts paths(const Packages &packages) {
    Texts texts;
    for (const PlannedPackage &package : packages)
        texts.push_back(package.path);
    return texts;
}

Texts components(const Packages &packages) {
    Texts texts;
    for (const PlannedPackage &package : packages)
        texts.push_back(package.component);
    return texts;
}

Download downloadOf(const WebComponent &component) {
    const std::string file(destinationName(component.address.value_or("")));
    return {.address = component.address,
            .file = file,
            .folder = std::string(extractFolderName(file)),
            .archive = archiveKind(file),
            .isContentKnown = component.items.has_value(),
            .packages = {},
            .setAside = {}};
}

void takeItem(const Content &content, Download &download, Packages &found) {
    if (content.outcome == Content::Outcome::SetAside)
        download.setAside.push_back(content.item);
    if (content.outcome != Content::Outcome::Installed)
        return;
    download.packages.push_back(content.item);
    const std::string path = std::string(downloadFolder) + download.folder + "/" + content.item;
    found.push_back({path, std::string(lastPathComponent(content.item)), Origin::Web, download.file});
}

Packages takeArchives(Plan &plan, const PlanInput &input) {
    Packages found;
    for (const WebComponent &component : input.web) {
        Download download = downloadOf(component);
        for (const Content &content : contentsOf(component.items.value_or(std::vector<std::string>())))
            takeItem(content, download, found);
        plan.downloads.push_back(std::move(download));
    }
    return found;
}

bool endsWithSetAside(const std::vector<Download> &downloads) noexcept {
    const bool last = !downloads.empty() && !downloads.back().setAside.empty();
    return unpackEnding(
               {.expanded = downloads.size(), .selected = downloads.size(), .setAside = last, .desktopFolder = last}) ==
           UnpackEnding::ShowSetAside;
}

PlannedPackage uninstallerOf(const PlanInput &input) {
    return {input.uninstaller, std::string(uninstallerKind), Origin::Uninstaller, {}};
}

void complete(Packages &list, const PlanInput &input) {
    if (input.manualWanted)
        list.push_back({input.manual, std::string(manualKind), Origin::Manual, {}});
    list.push_back(uninstallerOf(input));
}

void merge(Plan &plan, Packages &list, const PlanInput &input) {
    std::vector<bool> isMerged(input.media.size());
    for (const MergedRecord &record : mergeMedia(input.media, paths(list), input.secondScanDriver)) {
        const Origin origin = record.component ? Origin::MergedFromMedia : Origin::SecondScanDriver;
        list.push_back({record.installerPath, record.componentName, origin, {}});
        if (record.component)
            isMerged[*record.component] = true;
    }
    for (std::size_t i = 0; i < input.media.size(); ++i)
        if (!isMerged[i])
            plan.dropped.push_back({{input.media[i].location, input.media[i].kind, Origin::MergedFromMedia, {}},
                                    DropRule::WebVersionWins});
}

Packages ordered(const Packages &list) {
    Packages result;
    for (const std::size_t position : installOrder(components(list)))
        result.push_back(list[position]);
    return result;
}

/// Moves the packages at the positions, which ascend, from the list to the dropped ones.
void drop(Plan &plan, Packages &list, const std::vector<std::size_t> &positions, DropRule rule) {
    Packages kept;
    auto next = positions.begin();
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (next == positions.end() || *next != i) {
            kept.push_back(list[i]);
            continue;
        }
        plan.dropped.push_back({list[i], rule});
        ++next;
    }
    list = std::move(kept);
}

/// An archive that nobody has looked into is taken to bring packages.
bool bringsPackages(const Plan &plan, const Packages &found) noexcept {
    for (const Download &download : plan.downloads)
        if (!download.isContentKnown)
            return true;
    return !found.empty();
}

} // namespace

void planWeb(Plan &plan, const PlanInput &input) {
    plan.rows = input.web.size();
    Packages list = takeArchives(plan, input);
    plan.endsWithSetAside = endsWithSetAside(plan.downloads);
    if (plan.endsWithSetAside)
        return;
    if (bringsPackages(plan, list))
        complete(list, input);
    merge(plan, list, input);
    if (list.empty())
        return;
    list = ordered(list);
    drop(plan, list, redundantRecords(paths(list)), DropRule::Duplicate);
    drop(plan, list, legacyScanRecords(components(list)), DropRule::Legacy);
    if (!holdsUninstaller(paths(list)))
        list.push_back(uninstallerOf(input));
    plan.packages = std::move(list);
}

} // namespace vant::media
