#include "selection/SelectedSoftware.hpp"

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::optional<std::string>>;
using Kinds = std::vector<std::string_view>;

TEST(SelectedSoftware, EachReportedKindIsListedOnceInOrderOfFirstAppearance) {
    EXPECT_EQ(vant::newlySelectedSoftware(Texts{"Scan Driver", "Scan Driver", "Scan Driver", "Print Driver"}, {}),
              (Kinds{"Scan Driver", "Print Driver"}));
}

TEST(SelectedSoftware, AllSixKindsAreReported) {
    const Texts six{"Docuvane", "Statora", "PC fax Utility", "Pressdeck", "Scan Driver", "Print Driver"};
    EXPECT_EQ(vant::newlySelectedSoftware(six, {}),
              (Kinds{"Docuvane", "Statora", "PC fax Utility", "Pressdeck", "Scan Driver", "Print Driver"}));
}

TEST(SelectedSoftware, KindsListedAlreadyAreNotAddedAgain) {
    EXPECT_EQ(vant::newlySelectedSoftware(Texts{"Pressdeck", "Statora"}, Texts{"Pressdeck"}), Kinds{"Statora"});
    EXPECT_EQ(vant::newlySelectedSoftware(Texts{"Statora"}, Texts{std::nullopt, "Statora"}), Kinds{});
}

TEST(SelectedSoftware, OtherKindsAreNotReported) {
    for (const char *other :
         {"scan driver", "Scan Driver ", "User's Guide", "Printer Software Uninstaller", "", "Fax.pkg"})
        EXPECT_EQ(vant::newlySelectedSoftware(Texts{other}, {}), Kinds{}) << other;
    EXPECT_EQ(vant::newlySelectedSoftware(Texts{std::nullopt}, {}), Kinds{});
}

} // namespace
