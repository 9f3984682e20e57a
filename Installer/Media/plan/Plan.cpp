#include "plan/Plan.hpp"

#include "base/Paths.hpp"
#include "plan/WebPlan.hpp"
#include "selection/ComponentCatalogue.hpp"
#include "selection/InstallOrder.hpp"

namespace vant::media {
namespace {

/// The added component's origin, by its kind: the pane gives each of its additions a kind of its own.
Origin originOfAdded(const MediaComponent &component) noexcept {
    if (component.kind == uninstallerKind)
        return Origin::Uninstaller;
    return component.kind == manualKind ? Origin::Manual : Origin::SecondScanDriver;
}

void planMedia(Plan &plan, const PlanInput &input) {
    plan.rows = input.media.size();
    std::vector<PlannedPackage> listed;
    for (const MediaComponent &component : input.media)
        listed.push_back({component.location, component.kind, Origin::Selection, {}});
    const MediaSources sources{.selection = input.media,
                               .uninstaller = input.uninstaller,
                               .secondScanDriver = input.secondScanDriver,
                               .manual = input.manual,
                               .manualWanted = input.manualWanted};
    for (const MediaComponent &component : addedMediaComponents(sources))
        listed.push_back({component.location, component.kind, originOfAdded(component), {}});
    std::vector<std::optional<std::string>> kinds;
    kinds.reserve(listed.size());
    for (const PlannedPackage &package : listed)
        kinds.push_back(package.component);
    for (const std::size_t position : installOrder(kinds))
        plan.packages.push_back(listed[position]);
}

} // namespace

std::string_view originName(Origin origin) noexcept {
    switch (origin) {
    case Origin::Selection:
        return "selection";
    case Origin::SecondScanDriver:
        return "second scan driver";
    case Origin::Manual:
        return "manual";
    case Origin::Uninstaller:
        return "uninstaller";
    case Origin::Web:
        return "web";
    case Origin::MergedFromMedia:
        break;
    }
    return "merged from media";
}

std::string_view dropRuleName(DropRule rule) noexcept {
    switch (rule) {
    case DropRule::WebVersionWins:
        return "web version wins";
    case DropRule::Duplicate:
        return "duplicate";
    case DropRule::Legacy:
        break;
    }
    return "legacy";
}

std::string packageName(const PlannedPackage &package) {
    return package.path ? std::string(lastPathComponent(*package.path)) : std::string();
}

Plan makePlan(const PlanInput &input) {
    Plan plan;
    plan.view = chooseFlow(isWebFlowAllowed(input.smartUpdate, input.webError), input.web.size());
    if (plan.view == Flow::Web)
        planWeb(plan, input);
    else
        planMedia(plan, input);
    return plan;
}

} // namespace vant::media
