#include "install/chain/ExpandedItem.hpp"
#include "plan/Plan.hpp"
#include "selection/ComponentCatalogue.hpp"
#include "selection/InstallOrder.hpp"
#include "selection/MediaMerge.hpp"
#include "selection/SmartUpdateFilter.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <utility>

namespace vant::media {
namespace {

constexpr int rounds = 10'000;

using Texts = std::vector<std::optional<std::string>>;

/// A list as the pane keeps it: the value that names the package, and the one that names the component.
struct List {
    Texts paths;
    Texts components;
    void add(const std::optional<std::string> &path, const std::optional<std::string> &component) {
        paths.push_back(path);
        components.push_back(component);
    }
    void keep(const std::vector<std::size_t> &positions) {
        const List old = std::exchange(*this, {});
        for (const std::size_t position : positions)
            add(old.paths[position], old.components[position]);
    }
    void remove(const std::vector<std::size_t> &positions) {
        std::vector<std::size_t> rest;
        for (std::size_t i = 0; i < paths.size(); ++i)
            if (std::ranges::find(positions, i) == positions.end())
                rest.push_back(i);
        keep(rest);
    }
    bool operator==(const List &) const = default;
};

class Dice {
public:
    std::size_t below(std::size_t count) { return random_() % count; }
    bool once(std::size_t in) { return below(in) == 0; }
    std::optional<std::string> path(const std::string &folder) {
        constexpr std::array names{"Fax.pkg", "Scanwick.pkg", "Printer Driver.pkg",
                                   "A.pkg",   "B.pkg",        "Uninstaller.pkg"};
        return once(12) ? std::nullopt : std::optional(folder + names.at(below(names.size())));
    }
    std::optional<std::string> kind() {
        const std::size_t pick = below(components().size() + 2);
        if (pick >= components().size())
            return pick == components().size() ? std::nullopt : std::optional<std::string>("stranger");
        return std::string(components()[pick].name);
    }
    std::vector<std::string> items() {
        std::vector<std::string> items;
        for (std::size_t i = below(5); i > 0; --i)
            items.push_back("f/" + std::string(components()[below(components().size())].name));
        return items;
    }

private:
    std::mt19937 random_{20261121};
};

PlanInput randomInput(Dice &dice) {
    PlanInput input;
    input.smartUpdate = !dice.once(3);
    input.webError = dice.once(6);
    for (std::size_t i = dice.below(6); i > 0; --i)
        input.media.push_back({dice.path("/m/"), dice.kind()});
    for (std::size_t i = dice.below(5); i > 0; --i)
        input.web.push_back({"http://s/" + std::to_string(dice.below(4)) + ".zip", dice.kind(), dice.items()});
    input.uninstaller = dice.once(5) ? std::nullopt : std::optional<std::string>("/h/Uninstaller.pkg");
    input.manual = dice.once(5) ? std::nullopt : std::optional<std::string>("/h/Manual.pkg");
    input.secondScanDriver = dice.path("/m2/");
    input.manualWanted = dice.once(2);
    return input;
}

/// The media view's list, by the steps of the pane's operations.
List mediaList(const PlanInput &input) {
    List list;
    for (const MediaComponent &component : input.media)
        list.add(component.location, component.kind);
    for (const MediaComponent &added : addedMediaComponents(
             {input.media, input.uninstaller, input.secondScanDriver, input.manual, input.manualWanted}))
        list.add(added.location, added.kind);
    list.keep(installOrder(list.components));
    return list;
}

/// What the archives bring; nothing when the last one is set aside.
std::optional<List> expandedList(const PlanInput &input) {
    List list;
    bool setAside = false;
    for (const WebComponent &component : input.web) {
        setAside = false;
        const std::string name = component.address->substr(9);
        for (const std::string &item : *component.items) {
            const ExpandedAction action = classifyExpandedItem(item).action;
            if (action == ExpandedAction::Install || action == ExpandedAction::InstallScanManager)
                list.add("Vantrel/Download/" + name.substr(0, name.size() - 4) + "/" + item, item.substr(2));
            setAside = setAside || action == ExpandedAction::SetAside || action == ExpandedAction::SetAsideAtOnce;
        }
    }
    return setAside ? std::nullopt : std::optional(list);
}

/// The web view's list, by the steps of the pane's operations.
List webList(const PlanInput &input) {
    auto expanded = expandedList(input);
    if (!expanded)
        return {};
    List list = *expanded;
    if (!list.paths.empty()) {
        if (input.manualWanted)
            list.add(input.manual, "User's Guide");
        list.add(input.uninstaller, "Printer Software Uninstaller");
    }
    for (const MergedRecord &merged : mergeMedia(input.media, list.paths, input.secondScanDriver))
        list.add(merged.installerPath, merged.componentName);
    if (list.paths.empty())
        return list;
    list.keep(installOrder(list.components));
    list.remove(redundantRecords(list.paths));
    list.remove(legacyScanRecords(list.components));
    if (!holdsUninstaller(list.paths))
        list.add(input.uninstaller, "Printer Software Uninstaller");
    return list;
}

List listOf(const Plan &plan) {
    List list;
    for (const PlannedPackage &package : plan.packages)
        list.add(package.path, package.component);
    return list;
}

TEST(RandomPlan, IsWhatThePanesStepsMakeOfAnySelection) {
    Dice dice;
    int webRounds = 0;
    for (int round = 0; round < rounds; ++round) {
        const PlanInput input = randomInput(dice);
        const bool isWeb = input.smartUpdate && !input.webError && !input.web.empty();
        const Plan plan = makePlan(input);
        ASSERT_EQ(plan.view == Flow::Web, isWeb) << "round " << round;
        ASSERT_EQ(listOf(plan), isWeb ? webList(input) : mediaList(input)) << "round " << round;
        webRounds += isWeb ? 1 : 0;
    }
    EXPECT_GT(webRounds, rounds / 4);
}

/// Nothing is lost on the way: what was found or selected is in the list or among what was dropped.
TEST(RandomPlan, EveryMediaComponentIsInstalledOrDropped) {
    Dice dice;
    for (int round = 0; round < rounds; ++round) {
        const PlanInput input = randomInput(dice);
        const Plan plan = makePlan(input);
        if (plan.endsWithSetAside)
            continue;
        const auto isSelected = [](Origin origin) {
            return origin == Origin::Selection || origin == Origin::MergedFromMedia;
        };
        const auto count = std::ranges::count_if(plan.packages, isSelected, &PlannedPackage::origin) +
                           std::ranges::count_if(plan.dropped, isSelected,
                                                 [](const DroppedPackage &each) { return each.package.origin; });
        ASSERT_EQ(static_cast<std::size_t>(count), input.media.size()) << "round " << round;
    }
}

} // namespace
} // namespace vant::media
