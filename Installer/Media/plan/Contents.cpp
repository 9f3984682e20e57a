#include "plan/Contents.hpp"

#include "base/Paths.hpp"
#include "install/chain/ExpandedItem.hpp"
#include "selection/ComponentCatalogue.hpp"

#include <algorithm>
#include <array>

namespace vant::media {
namespace {

using Outcome = Content::Outcome;

constexpr std::array<std::string_view, 3> endings{"pkg", "mpkg", "app"};

std::string lowered(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    return lower;
}

bool hasEnding(std::string_view path) {
    return std::ranges::find(endings, lowered(pathExtension(path))) != endings.end();
}

/// The innermost package or application that holds the item.
std::string holderOf(std::string_view item) {
    for (auto slash = item.rfind('/'); slash != std::string_view::npos; slash = item.rfind('/', slash - 1)) {
        const std::string_view holder = item.substr(0, slash);
        if (hasEnding(holder))
            return std::string(holder);
        if (slash == 0)
            break;
    }
    return "";
}

Outcome outcomeOf(ExpandedAction action) noexcept {
    switch (action) {
    case ExpandedAction::Install:
    case ExpandedAction::InstallScanManager:
        return Outcome::Installed;
    case ExpandedAction::SetAside:
    case ExpandedAction::SetAsideAtOnce:
        return Outcome::SetAside;
    case ExpandedAction::Skip:
        break;
    }
    return Outcome::PassedOver;
}

std::string reasonForSettingAside(std::string_view item) {
    const std::string_view extension = pathExtension(item);
    if (extension == "mpkg")
        return "a metapackage is never run";
    if (extension == "app")
        return "an application is not installed";
    return extension == "pkg" ? "its name is none of those that are installed" : "it is a vendor's own installer";
}

std::string reasonForPassingOver(std::string_view item) {
    const std::string_view name = lastPathComponent(item);
    if (name == uninstallerPackage)
        return "the host brings its own";
    if (findComponent(name) != nullptr)
        return "it belongs to a package beside it";
    return "endings are compared exactly, and this one is written otherwise";
}

std::string reasonFor(Outcome outcome, std::string_view item) {
    if (outcome == Outcome::Installed)
        return "";
    return outcome == Outcome::SetAside ? reasonForSettingAside(item) : reasonForPassingOver(item);
}

} // namespace

std::string_view outcomeName(Outcome outcome) noexcept {
    switch (outcome) {
    case Outcome::Installed:
        return "installed";
    case Outcome::PassedOver:
        return "passed over";
    case Outcome::SetAside:
        return "set aside";
    case Outcome::Dropped:
        break;
    }
    return "dropped";
}

std::vector<Content> contentsOf(const std::vector<std::string> &items) {
    std::vector<Content> contents;
    for (const std::string &item : items) {
        const Outcome outcome = outcomeOf(classifyExpandedItem(item).action);
        if (outcome != Outcome::PassedOver || hasEnding(item))
            contents.push_back({item, outcome, reasonFor(outcome, item), holderOf(item)});
    }
    return contents;
}

std::vector<std::string> packagesAmong(const std::vector<std::string> &items) {
    std::vector<std::string> packages;
    for (const Content &content : contentsOf(items))
        if (content.outcome == Outcome::Installed)
            packages.push_back(content.item);
    return packages;
}

std::vector<Content> contentsOf(const std::vector<std::string> &items, const Plan &plan, const std::string &archive) {
    std::vector<Content> contents = contentsOf(items);
    for (Content &content : contents) {
        const auto isThis = [&](const DroppedPackage &dropped) {
            return dropped.package.archive == archive && dropped.package.path &&
                   dropped.package.path->ends_with("/" + content.item);
        };
        const auto dropped = std::ranges::find_if(plan.dropped, isThis);
        if (content.outcome != Outcome::Installed || dropped == plan.dropped.end())
            continue;
        content.outcome = Outcome::Dropped;
        content.reason = dropRuleName(dropped->rule);
    }
    return contents;
}

std::vector<std::string> installedNames() {
    std::vector<std::string> names;
    for (const Component &component : components())
        if (component.inArchive && outcomeOf(*component.inArchive) == Outcome::Installed && !component.isLegacy)
            names.emplace_back(component.name);
    return names;
}

} // namespace vant::media
