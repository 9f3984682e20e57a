#include "install/chain/ChainSteps.hpp"

#include <gtest/gtest.h>

using vant::Announcement;
using vant::ChainState;
using vant::Flow;
using vant::stepAfterPackage;

namespace {

struct ChainCase {
    Flow flow;
    ChainState state;
    Announcement announcement;
    bool advances;
    std::string_view trace;
};

// clang-format off
const ChainCase chainCases[] = {
    // flow               index  D   N  failed   announcement
    {Flow::Web,   {0,     1,  1, false},  Announcement::WebComplete,      false, "Posting notification:[SUInstallComplete]"},
    {Flow::Web,   {0,     1,  1, true},   Announcement::WebComplete,      false, "Posting notification:[SUInstallComplete]"},
    {Flow::Web,   {0,     1,  2, true},   Announcement::NextWebPackage,   true,
     "Posting notification:[InstallNextSUComponent] cdInstallIndex[0] mInstalledPackageDict[1] mInstallCompArrayForSmartUpdate[2]"},
    {Flow::Web,   {7,     0,  9, false},  Announcement::NextWebPackage,   true,
     "Posting notification:[InstallNextSUComponent] cdInstallIndex[7] mInstalledPackageDict[0] mInstallCompArrayForSmartUpdate[9]"},
    {Flow::Web,   {1,     3,  2, false},  Announcement::Nothing,          false, ""},
    {Flow::Media, {4,     5,  5, false},  Announcement::MediaComplete,    false, "Posting notification:[CDInstallComplete]"},
    {Flow::Media, {4,     5,  5, true},   Announcement::MediaFailed,      false, "Posting notification FAILED:[FindInstallFile3]"},
    {Flow::Media, {4,     4,  5, true},   Announcement::NextMediaPackage, true,
     "Posting notification:[InstallNextCDComponent] cdInstallIndex[4] mInstalledPackageDict[4] mInstallCompArrayForCDUpdate[5]"},
    {Flow::Media, {0,     2,  1, true},   Announcement::Nothing,          false, ""},
    {Flow::Media, {0,     0,  0, false},  Announcement::MediaComplete,    false, "Posting notification:[CDInstallComplete]"},
};
// clang-format on

} // namespace

TEST(PackageChain, OutcomesAgainstPackagesDecideWhatFollows) {
    for (const ChainCase &row : chainCases) {
        const auto step = stepAfterPackage(row.flow, row.state);
        const auto where = testing::Message()
                           << (row.flow == Flow::Web ? "web" : "media") << " index " << row.state.index << " D "
                           << row.state.outcomes << " N " << row.state.packages << " failed " << row.state.anyFailed;
        EXPECT_EQ(step.announcement, row.announcement) << where;
        EXPECT_EQ(step.advances, row.advances) << where;
        EXPECT_EQ(step.trace, row.trace) << where;
    }
}

TEST(PackageChain, AWholeListAnnouncesEachNextPackageOnceAndThenCompletes) {
    for (const Flow flow : {Flow::Web, Flow::Media}) {
        for (std::size_t packages = 1; packages <= 100; ++packages) {
            int index = 0;
            std::size_t nexts = 0;
            std::size_t outcomes = 1;
            for (; outcomes < packages; ++outcomes) {
                const auto step = stepAfterPackage(flow, {index, outcomes, packages, false});
                ASSERT_TRUE(step.advances) << packages << " packages, " << outcomes << " outcomes";
                ++index;
                ++nexts;
            }
            EXPECT_EQ(nexts, packages - 1);
            EXPECT_FALSE(stepAfterPackage(flow, {index, outcomes, packages, false}).advances) << packages;
        }
    }
}

TEST(PackageChain, LargestCountsFitTheTraceMessage) {
    const auto step = stepAfterPackage(Flow::Web, {2147483647, 2147483646, 2147483647, false});
    EXPECT_EQ(step.trace, "Posting notification:[InstallNextSUComponent] cdInstallIndex[2147483647] "
                          "mInstalledPackageDict[2147483646] mInstallCompArrayForSmartUpdate[2147483647]");
}

namespace vant {
namespace {

UnpackEnding ending(std::size_t expanded, std::size_t selected, bool setAside, bool desktopFolder) {
    return unpackEnding(
        {.expanded = expanded, .selected = selected, .setAside = setAside, .desktopFolder = desktopFolder});
}

TEST(UnpackEnding, WaitsUntilTheCountsAreEqual) {
    for (const bool setAside : {false, true}) {
        EXPECT_EQ(ending(1, 3, setAside, true), UnpackEnding::MoreToCome);
        EXPECT_EQ(ending(2, 3, setAside, true), UnpackEnding::MoreToCome);
        EXPECT_EQ(ending(4, 3, setAside, true), UnpackEnding::MoreToCome) << "a further archive ends nothing again";
        EXPECT_EQ(ending(1, 0, setAside, true), UnpackEnding::MoreToCome);
    }
}

TEST(UnpackEnding, InstallsUnlessTheLastArchiveWasSetAside) {
    EXPECT_EQ(ending(3, 3, false, false), UnpackEnding::Install);
    EXPECT_EQ(ending(3, 3, false, true), UnpackEnding::Install) << "what an earlier archive left does not count";
}

TEST(UnpackEnding, ShowsTheSetAsideFolderOnlyWhenItIsThere) {
    EXPECT_EQ(ending(3, 3, true, true), UnpackEnding::ShowSetAside);
    EXPECT_EQ(ending(3, 3, true, false), UnpackEnding::SetAsideMissing);
}

} // namespace
} // namespace vant
