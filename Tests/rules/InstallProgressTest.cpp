#include "install/package/InstallProgress.hpp"

#include <gtest/gtest.h>

using vant::installProgress;
using vant::ListPosition;
using vant::webBarValue;

TEST(InstallProgress, GrowsWithThePositionInTheList) {
    for (std::size_t n = 1; n <= 50; ++n)
        for (int i = 0; i < static_cast<int>(n); ++i)
            for (const double p : {0.0, 1.0, 50.0, 97.0, 100.0}) {
                const double share = 1.0 / static_cast<double>(n);
                EXPECT_EQ(installProgress(p, {.index = i, .packages = n}), share * p * (i + 1))
                    << "n " << n << " i " << i << " p " << p;
            }
}

TEST(InstallProgress, IsRoundedAsTheShareTimesThePercentage) {
    // A third comes first: 100 / 3 would round differently in the last place.
    EXPECT_EQ(installProgress(97.0, {.index = 1, .packages = 3}), (1.0 / 3.0) * 97.0 * 2.0);
    EXPECT_EQ(installProgress(100.0, {.index = 4, .packages = 5}), 100.0);
}

TEST(InstallProgress, WebBarGrowsAsFewerPackagesRemain) {
    EXPECT_EQ(webBarValue(60.0, ListPosition{.index = 0, .packages = 3}), 20.0);
    EXPECT_EQ(webBarValue(60.0, ListPosition{.index = 1, .packages = 3}), 30.0);
    EXPECT_EQ(webBarValue(60.0, ListPosition{.index = 2, .packages = 3}), 60.0);
    EXPECT_EQ(webBarValue(0.0, ListPosition{.index = 2, .packages = 3}), 0.0);
}

TEST(InstallProgress, TheTwoFiguresDiffer) {
    const ListPosition second{.index = 1, .packages = 4};
    EXPECT_EQ(installProgress(30.0, second), 15.0);
    EXPECT_EQ(webBarValue(30.0, second), 10.0);
}
