#include "selection/SmartUpdateFilter.hpp"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace {

using Texts = std::vector<std::optional<std::string>>;
using Positions = std::vector<std::size_t>;

/// The filter by the letter: from the last record to the first, each compared with all before it.
Positions redundantByTheLetter(Texts paths) {
    Positions dropped;
    for (std::size_t i = paths.size(); i-- > 0;) {
        const auto earlier = paths.begin() + static_cast<std::ptrdiff_t>(i);
        if (!paths[i] || std::find(paths.begin(), earlier, paths[i]) == earlier)
            continue;
        paths.erase(earlier);
        dropped.insert(dropped.begin(), i);
    }
    return dropped;
}

TEST(SmartUpdateFilter, TheFirstRecordOfAPathStays) {
    EXPECT_EQ(vant::redundantRecords(Texts{"/a.pkg", "/b.pkg", "/a.pkg", "/a.pkg", "/c.pkg"}), (Positions{2, 3}));
}

TEST(SmartUpdateFilter, RecordsWithoutAPathAreNeverRedundant) {
    EXPECT_EQ(vant::redundantRecords(Texts{std::nullopt, std::nullopt, "", "", std::nullopt}), Positions{3});
}

TEST(SmartUpdateFilter, PathsAreComparedExactly) {
    EXPECT_EQ(vant::redundantRecords(Texts{"/a.pkg", "/A.pkg", "/a.pkg/", "//a.pkg"}), Positions{});
    EXPECT_EQ(vant::redundantRecords(Texts{}), Positions{});
}

TEST(SmartUpdateFilter, IsTheFilterByTheLetterForAnyList) {
    std::mt19937 random(3);
    for (int round = 0; round < 300; ++round) {
        Texts paths(random() % 30);
        for (auto &path : paths)
            if (const auto pick = random() % 8; pick > 0)
                path = "/p" + std::to_string(pick);
        EXPECT_EQ(vant::redundantRecords(paths), redundantByTheLetter(paths)) << "round " << round;
    }
}

TEST(SmartUpdateFilter, TheTwoLegacyScanPackagesAreDroppedWhereverTheyStand) {
    EXPECT_EQ(
        vant::legacyScanRecords(Texts{"Scanmate.pkg", "Fax.pkg", "Scan Manager.pkg", std::nullopt, "Scanmate.pkg"}),
        (Positions{0, 2, 4}));
}

TEST(SmartUpdateFilter, OtherNamesAreNoLegacyScanPackages) {
    EXPECT_EQ(vant::legacyScanRecords(Texts{"scan manager.pkg", "Scan Manager", "Scanmate.pkg ", "", "Scanwick.pkg"}),
              Positions{});
}

struct UninstallerCase {
    std::optional<std::string> path;
    bool isUninstaller;
};

TEST(SmartUpdateFilter, TheUninstallerIsKnownByItsFileName) {
    const UninstallerCase cases[] = {
        {"/Applications/H.app/Contents/Resources/Uninstaller.pkg", true},
        {"Uninstaller.pkg", true},
        {"/x/Uninstaller.pkg/", true},
        {"/x/uninstaller.pkg", false},
        {"/x/MyUninstaller.pkg", false},
        {"/Uninstaller.pkg/Contents", false},
        {"", false},
        {std::nullopt, false},
    };
    for (const UninstallerCase &row : cases)
        EXPECT_EQ(vant::holdsUninstaller(Texts{"/a.pkg", row.path}), row.isUninstaller) << row.path.value_or("(none)");
}

TEST(SmartUpdateFilter, AnEmptyListHoldsNoUninstaller) {
    EXPECT_FALSE(vant::holdsUninstaller({}));
}

} // namespace
