#include "install/chain/UnpackEnding.hpp"

#include <gtest/gtest.h>

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
