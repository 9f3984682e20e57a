#include "install/chain/PackageChain.hpp"

#include <gtest/gtest.h>

using vant::Announcement;
using vant::ChainState;
using vant::InstallFlow;
using vant::stepAfterPackage;

namespace {

struct ChainCase {
    InstallFlow flow;
    ChainState state;
    Announcement announcement;
    bool advances;
    std::string_view trace;
};

// clang-format off
const ChainCase chainCases[] = {
    // flow               index  D   N  failed   announcement
    {InstallFlow::Web,   {0,     1,  1, false},  Announcement::WebComplete,      false, "Posting notification:[SUInstallComplete]"},
    {InstallFlow::Web,   {0,     1,  1, true},   Announcement::WebComplete,      false, "Posting notification:[SUInstallComplete]"},
    {InstallFlow::Web,   {0,     1,  2, true},   Announcement::NextWebPackage,   true,
     "Posting notification:[InstallNextSUComponent] cdInstallIndex[0] mInstalledPackageDict[1] mInstallCompArrayForSmartUpdate[2]"},
    {InstallFlow::Web,   {7,     0,  9, false},  Announcement::NextWebPackage,   true,
     "Posting notification:[InstallNextSUComponent] cdInstallIndex[7] mInstalledPackageDict[0] mInstallCompArrayForSmartUpdate[9]"},
    {InstallFlow::Web,   {1,     3,  2, false},  Announcement::Nothing,          false, ""},
    {InstallFlow::Media, {4,     5,  5, false},  Announcement::MediaComplete,    false, "Posting notification:[CDInstallComplete]"},
    {InstallFlow::Media, {4,     5,  5, true},   Announcement::MediaFailed,      false, "Posting notification FAILED:[FindInstallFile3]"},
    {InstallFlow::Media, {4,     4,  5, true},   Announcement::NextMediaPackage, true,
     "Posting notification:[InstallNextCDComponent] cdInstallIndex[4] mInstalledPackageDict[4] mInstallCompArrayForCDUpdate[5]"},
    {InstallFlow::Media, {0,     2,  1, true},   Announcement::Nothing,          false, ""},
    {InstallFlow::Media, {0,     0,  0, false},  Announcement::MediaComplete,    false, "Posting notification:[CDInstallComplete]"},
};
// clang-format on

} // namespace

TEST(PackageChain, OutcomesAgainstPackagesDecideWhatFollows) {
    for (const ChainCase &row : chainCases) {
        const auto step = stepAfterPackage(row.flow, row.state);
        const auto where = testing::Message()
                           << (row.flow == InstallFlow::Web ? "web" : "media") << " index " << row.state.index << " D "
                           << row.state.outcomes << " N " << row.state.packages << " failed " << row.state.anyFailed;
        EXPECT_EQ(step.announcement, row.announcement) << where;
        EXPECT_EQ(step.advances, row.advances) << where;
        EXPECT_EQ(step.trace, row.trace) << where;
    }
}

TEST(PackageChain, AWholeListAnnouncesEachNextPackageOnceAndThenCompletes) {
    for (const InstallFlow flow : {InstallFlow::Web, InstallFlow::Media}) {
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
    const auto step = stepAfterPackage(InstallFlow::Web, {2147483647, 2147483646, 2147483647, false});
    EXPECT_EQ(step.trace, "Posting notification:[InstallNextSUComponent] cdInstallIndex[2147483647] "
                          "mInstalledPackageDict[2147483646] mInstallCompArrayForSmartUpdate[2147483647]");
}
