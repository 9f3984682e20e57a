#include "selection/ComponentCatalogue.hpp"

#include "install/chain/ExpandedItem.hpp"
#include "install/profiles/ColourProfiles.hpp"
#include "install/status/ComponentName.hpp"
#include "selection/InstallOrder.hpp"
#include "selection/SelectedSoftware.hpp"
#include "selection/SmartUpdateFilter.hpp"
#include "StringTables.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <set>

namespace fs = std::filesystem;

namespace vant {
namespace {

using Findings = std::set<std::string>;

bool isInstalledFromArchive(const Component &component) {
    return component.inArchive == ExpandedAction::Install || component.inArchive == ExpandedAction::InstallScanManager;
}

/// Found in archives, but never installed: nothing else is to be known of it.
bool isOnlyFound(const Component &component) {
    return component.inArchive && !isInstalledFromArchive(component);
}

bool isPackageFile(const Component &component) {
    return component.name.ends_with(".pkg");
}

std::vector<std::optional<std::string>> alone(const Component &component) {
    return {std::string(component.name)};
}

/// What a kind lacks.
void findGapsOfKind(const Component &kind, Findings &gaps) {
    const std::string name(kind.name);
    if (!kind.isRanked)
        gaps.insert(name + " has no place in the order of installation");
    if (!kind.isReported)
        gaps.insert(name + " is not reported to the host");
    if (kind.web.source == DisplayName::Source::Itself)
        gaps.insert(name + " has no words for the web flow's status line");
    if (kind.media.source == DisplayName::Source::Itself)
        gaps.insert(name + " has no words for the media flow's status line");
    for (const std::string &language : test::languageFolders(test::paneTable.folder))
        if (!test::readTable(test::paneTable, language).strings.contains(name))
            gaps.insert(name + " has no words for the list of components");
}

/// What a package file lacks.
void findGapsOfPackage(const Component &package, Findings &gaps) {
    const std::string name(package.name);
    if (!package.isRanked && !package.isLegacy)
        gaps.insert(name + " has no place in the order of installation");
    if (!isInstalledFromArchive(package))
        gaps.insert(name + " is set aside when an archive holds it");
    if (package.web.source == DisplayName::Source::Itself)
        gaps.insert(name + " has no words for the web flow's status line");
}

/// The keys of a language's words for components.
Findings componentKeys(const std::string &language) {
    Findings keys;
    for (const std::string &key : test::readTable(test::paneTable, language).keys)
        if (key.ends_with("Component"))
            keys.insert(key);
    return keys;
}

std::string sourceText(const fs::path &file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

TEST(ComponentCatalogue, HoldsEveryNameOnce) {
    Findings names;
    for (const Component &component : components()) {
        EXPECT_TRUE(names.insert(std::string(component.name)).second) << component.name;
        EXPECT_EQ(findComponent(component.name), &component);
    }
    EXPECT_EQ(findComponent(""), nullptr);
    EXPECT_EQ(findComponent("print driver"), nullptr);
}

TEST(ComponentCatalogue, EveryKindAndPackageIsComplete) {
    Findings gaps;
    for (const Component &component : components())
        if (isPackageFile(component) && !isOnlyFound(component))
            findGapsOfPackage(component, gaps);
        else if (!isOnlyFound(component))
            findGapsOfKind(component, gaps);
    // Kept on purpose; the catalogue says why. A new name here needs a reason there.
    const Findings wanted{
        "Docuvane has no words for the list of components",
        "Docuvane has no words for the media flow's status line",
        "Docuvane has no words for the web flow's status line",
        "Manual.pkg has no words for the web flow's status line",
        "Manual.pkg is set aside when an archive holds it",
        "Printer Software Uninstaller has no words for the list of components",
        "Printer Software Uninstaller has no words for the media flow's status line",
        "Printer Software Uninstaller has no words for the web flow's status line",
        "Printer Software Uninstaller is not reported to the host",
        "Statora has no place in the order of installation",
        "Statora has no words for the list of components",
        "Statora has no words for the media flow's status line",
        "Statora has no words for the web flow's status line",
        "User's Guide has no place in the order of installation",
        "User's Guide has no words for the list of components",
        "User's Guide has no words for the media flow's status line",
        "User's Guide has no words for the web flow's status line",
        "User's Guide is not reported to the host",
    };
    for (const std::string &gap : gaps)
        EXPECT_TRUE(wanted.contains(gap)) << gap;
    for (const std::string &gap : wanted)
        EXPECT_TRUE(gaps.contains(gap)) << "no longer true: " << gap;
}

TEST(ComponentCatalogue, WhatIsOnlyFoundInArchivesHasNoOtherTrait) {
    for (const Component &component : components()) {
        if (!isOnlyFound(component))
            continue;
        EXPECT_FALSE(component.isRanked || component.isReported || component.isLegacy) << component.name;
        EXPECT_FALSE(component.bringsProfiles || component.printerDriverOf) << component.name;
        EXPECT_TRUE(component.web == DisplayName{} && component.media == DisplayName{}) << component.name;
    }
}

TEST(ComponentCatalogue, OnlyKindsAreReportedAndOnlyPackagesAreLegacy) {
    for (const Component &component : components()) {
        EXPECT_FALSE(component.isReported && isPackageFile(component)) << component.name;
        EXPECT_FALSE(component.isLegacy && !isPackageFile(component)) << component.name;
    }
}

TEST(ComponentCatalogue, EachFlowHasOnePrinterDriver) {
    for (const Flow flow : {Flow::Media, Flow::Web})
        EXPECT_EQ(std::ranges::count(components(), std::optional(flow), &Component::printerDriverOf), 1);
}

TEST(ComponentCatalogue, ItsKeysAreTheComponentWordsOfEveryStringTable) {
    Findings keys;
    for (const Component &component : components())
        for (const DisplayName &name : {component.web, component.media})
            if (name.source == DisplayName::Source::StringKey)
                keys.insert(std::string(name.text));
    for (const std::string &language : test::languageFolders(test::paneTable.folder))
        EXPECT_EQ(componentKeys(language), keys) << "words of components in " << language;
}

TEST(ComponentCatalogue, KindAndPackageShareTheirWords) {
    Findings ofKinds;
    Findings ofPackages;
    for (const Component &component : components())
        if (component.web.source == DisplayName::Source::StringKey)
            (isPackageFile(component) ? ofPackages : ofKinds).insert(std::string(component.web.text));
    EXPECT_EQ(ofKinds, ofPackages) << "a key of one of the two alone";
}

TEST(ComponentCatalogue, EveryRuleSaysWhatTheCatalogueSays) {
    for (const Component &component : components()) {
        const auto names = alone(component);
        EXPECT_EQ(newlySelectedSoftware(names, {}).size(), component.isReported ? 1U : 0U) << component.name;
        EXPECT_EQ(legacyScanRecords(names).size(), component.isLegacy ? 1U : 0U) << component.name;
        EXPECT_EQ(displayName(Flow::Web, component.name), component.web) << component.name;
        EXPECT_EQ(displayName(Flow::Media, component.name), component.media) << component.name;
        for (const Flow flow : {Flow::Media, Flow::Web})
            EXPECT_EQ(isPrinterDriver(flow, component.name), component.printerDriverOf == flow) << component.name;
        if (component.inArchive) {
            EXPECT_EQ(classifyExpandedItem(component.name).action, *component.inArchive) << component.name;
        }
        if (!isOnlyFound(component)) {
            EXPECT_EQ(needsColourProfiles(component.name), component.bringsProfiles)
                << component.name << ": what the catalogue says of colour profiles is not what its name calls for";
        }
    }
}

TEST(ComponentCatalogue, TheOrderOfInstallationIsItsOwn) {
    std::vector<std::optional<std::string>> names;
    std::vector<std::optional<std::string>> ranked;
    for (const Component &component : components()) {
        names.insert(names.begin(), std::string(component.name));
        if (component.isRanked)
            ranked.emplace_back(component.name);
    }
    const std::vector<std::size_t> order = installOrder(names);
    ASSERT_EQ(order.size(), names.size());
    for (std::size_t i = 0; i < ranked.size(); ++i)
        EXPECT_EQ(names.at(order.at(i)), ranked.at(i));
    EXPECT_TRUE(std::ranges::is_sorted(order.begin() + static_cast<std::ptrdiff_t>(ranked.size()), order.end()))
        << "what has no rank keeps its order";
}

TEST(ComponentCatalogue, NoOtherFileOfThePaneNamesAComponent) {
    std::size_t files = 0;
    for (const auto &entry : fs::recursive_directory_iterator(VANT_SOURCES)) {
        const fs::path &file = entry.path();
        const std::string extension = file.extension();
        if ((extension != ".cpp" && extension != ".mm" && extension != ".hpp" && extension != ".h") ||
            file.stem() == "ComponentCatalogue")
            continue;
        ++files;
        const std::string text = sourceText(file);
        for (const Component &component : components())
            EXPECT_EQ(text.find('"' + std::string(component.name) + '"'), std::string::npos)
                << file << " names " << component.name;
    }
    EXPECT_GT(files, 50U);
}

} // namespace
} // namespace vant
