#include "selection/MediaList.hpp"

#include <gtest/gtest.h>

namespace {

using Components = std::vector<vant::MediaComponent>;

const vant::MediaComponent uninstaller{"/host/Uninstaller.pkg", "Printer Software Uninstaller"};
const vant::MediaComponent secondScanDriver{"/media/Scan2.pkg", "Scan Driver"};
const vant::MediaComponent manual{"/host/Manual.pkg", "User's Guide"};

vant::MediaSources sources(Components selection) {
    return {.selection = std::move(selection),
            .uninstaller = uninstaller.location,
            .secondScanDriver = secondScanDriver.location,
            .manual = manual.location,
            .manualWanted = false};
}

TEST(MediaList, TheUninstallerIsAddedWhateverWasSelected) {
    EXPECT_EQ(vant::addedMediaComponents(sources({})), Components{uninstaller});
    EXPECT_EQ(vant::addedMediaComponents(sources({{"/a.pkg", "Statora"}, uninstaller})), Components{uninstaller});
}

TEST(MediaList, EverySelectedScanDriverBringsTheSecondPackage) {
    const vant::MediaComponent selected{"/media/Scan.pkg", "Scan Driver"};
    EXPECT_EQ(vant::addedMediaComponents(sources({selected})), (Components{uninstaller, secondScanDriver}));
    EXPECT_EQ(vant::addedMediaComponents(sources({selected, {"/p.pkg", "Print Driver"}, selected})),
              (Components{uninstaller, secondScanDriver, secondScanDriver}));
}

TEST(MediaList, KindsAreComparedExactly) {
    EXPECT_EQ(
        vant::addedMediaComponents(sources({{"/a.pkg", "scan driver"}, {"/b.pkg", std::nullopt}, {"/c.pkg", ""}})),
        Components{uninstaller});
}

TEST(MediaList, TheManualComesLastAndOnce) {
    vant::MediaSources wanted = sources({{"/media/Scan.pkg", "Scan Driver"}, {"/m.pkg", "User's Guide"}});
    wanted.manualWanted = true;
    EXPECT_EQ(vant::addedMediaComponents(wanted), (Components{uninstaller, secondScanDriver, manual}));
}

TEST(MediaList, AbsentPathsStayAbsent) {
    const vant::MediaSources bare{.selection = {{std::nullopt, "Scan Driver"}}, .manualWanted = true};
    EXPECT_EQ(vant::addedMediaComponents(bare), (Components{{std::nullopt, "Printer Software Uninstaller"},
                                                            {std::nullopt, "Scan Driver"},
                                                            {std::nullopt, "User's Guide"}}));
}

} // namespace
