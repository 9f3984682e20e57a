#include "install/package/InstallerCommand.hpp"

#include <gtest/gtest.h>

TEST(InstallerCommand, ThePackageGoesToTheRootVolumeWithMachineReadableProgress) {
    EXPECT_STREQ(vant::installerTool, "/usr/sbin/installer");
    const auto words = vant::installerArguments("/Volumes/M/Fax.pkg");
    const std::array<std::string, 5> expected{"-verboseR", "-pkg", "/Volumes/M/Fax.pkg", "-target", "/"};
    EXPECT_EQ(words, expected);
}

TEST(InstallerCommand, PathsAreOneArgumentWhateverTheyHold) {
    for (const std::string path : {"", "/a b", "/\"`$x`\"", "/line\nfeed", "/\xC3\xA9.pkg"})
        EXPECT_EQ(vant::installerArguments(path)[2], path);
}
