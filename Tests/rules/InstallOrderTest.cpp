#include "selection/InstallOrder.hpp"

#include <algorithm>
#include <gtest/gtest.h>
#include <list>
#include <numeric>
#include <random>

namespace {

using Names = std::vector<std::optional<std::string>>;
using Order = std::vector<std::size_t>;

const std::vector<std::string> knownNames{
    "Print Driver", "Printer Driver.pkg",           "Scan Driver", "Hueforge.pkg",   "Scanwick.pkg",
    "Pressdeck",    "Printer Manager.pkg",          "Docuvane",    "PC fax Utility", "Fax.pkg",
    "Manual.pkg",   "Printer Software Uninstaller",
};

Names ordered(const Names &names) {
    Names result;
    for (const std::size_t position : vant::installOrder(names))
        result.push_back(names.at(position));
    return result;
}

/// The sort by the letter: for each known name a walk over the whole list, each placed record taken out of the rest.
Order orderByTheLetter(const Names &names) {
    std::list<std::size_t> rest(names.size());
    std::iota(rest.begin(), rest.end(), 0U);
    Order result;
    for (const std::string &known : knownNames) {
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (names[i] != known)
                continue;
            result.push_back(i);
            rest.remove_if([&](std::size_t other) { return other == i || names[other] == names[i]; });
        }
    }
    result.insert(result.end(), rest.begin(), rest.end());
    return result;
}

Names randomNames(std::mt19937 &random, std::size_t count) {
    const std::vector<std::optional<std::string>> strangers{
        std::nullopt, "", "Statora", "User's Guide", "print driver", "Print Driver ", "Scan Manager.pkg", "Fax"};
    Names names;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t pick = random() % (knownNames.size() + strangers.size());
        names.push_back(pick < knownNames.size() ? knownNames[pick] : strangers[pick - knownNames.size()]);
    }
    return names;
}

TEST(InstallOrder, InstallTypeSaysWhichValueNamesARecord) {
    EXPECT_EQ(vant::recordName("CD"), vant::RecordName::type);
    EXPECT_EQ(vant::recordName("SmartUpdate"), vant::RecordName::componentName);
    for (const std::string_view other : {"", "cd", "CD ", "smartupdate", "Smart Update", "DVD"})
        EXPECT_EQ(vant::recordName(other), vant::RecordName::none) << other;
}

TEST(InstallOrder, EveryKnownNameHasItsPlace) {
    Names reversed(knownNames.rbegin(), knownNames.rend());
    EXPECT_EQ(ordered(reversed), Names(knownNames.begin(), knownNames.end()));
}

TEST(InstallOrder, WebPackagesComeDriversFirstAndStrangersLast) {
    EXPECT_EQ(ordered({"Fax.pkg", "Scan Manager.pkg", "Printer Driver.pkg", "User's Guide"}),
              (Names{"Printer Driver.pkg", "Fax.pkg", "Scan Manager.pkg", "User's Guide"}));
}

TEST(InstallOrder, MediaKindsKeepTheirOrderWithinAKind) {
    EXPECT_EQ(vant::installOrder(Names{"Printer Software Uninstaller", "PC fax Utility", "Print Driver", "Scan Driver",
                                       "Scan Driver"}),
              (Order{2, 3, 4, 1, 0}));
}

TEST(InstallOrder, AnUnknownKindStandsBehindTheUninstaller) {
    EXPECT_EQ(ordered({"User's Guide", "Printer Software Uninstaller"}),
              (Names{"Printer Software Uninstaller", "User's Guide"}));
}

TEST(InstallOrder, NamesAreComparedExactly) {
    EXPECT_EQ(vant::installOrder(Names{"print driver", "Print Driver ", " Print Driver", "Print Driver"}),
              (Order{3, 0, 1, 2}));
}

TEST(InstallOrder, ListsWithoutKnownNamesStayAsTheyAre) {
    EXPECT_EQ(vant::installOrder(Names{}), Order{});
    EXPECT_EQ(vant::installOrder(Names{std::nullopt, std::nullopt, "Statora", std::nullopt}), (Order{0, 1, 2, 3}));
}

TEST(InstallOrder, IsTheSortByTheLetterForAnyList) {
    std::mt19937 random(20261121);
    for (int round = 0; round < 500; ++round) {
        const Names names = randomNames(random, random() % 40);
        EXPECT_EQ(vant::installOrder(names), orderByTheLetter(names)) << "round " << round;
    }
}

TEST(InstallOrder, EveryRecordOfALongListIsPlacedOnce) {
    std::mt19937 random(7);
    Order order = vant::installOrder(randomNames(random, 100000));
    std::ranges::sort(order);
    Order all(100000);
    std::iota(all.begin(), all.end(), 0U);
    EXPECT_EQ(order, all);
}

} // namespace
