#import "InstallTest.h"

#import "install/chain/VantInstallation+InstallChain.h"

#include "Jail.hpp"
#include "SignalStorm.hpp"

using namespace vant::test;

/// A host whose signal handler interrupts every system call, on every thread.
class SignalsDuringARun : public InstallTest {};

TEST_F(SignalsDuringARun, NeitherEndAPackageBeforeItsInstallerHasEndedNorLoseALine) {
    const std::string journal = (scratch / "journal").string();
    setInstaller("echo begin >> '" + journal + "'\n" +
                 "for n in 1 2 3 4 5 6 7 8 9 10; do echo \"installer:%$n.000000\"; sleep 0.02; done\n" +
                 "echo end >> '" + journal + "'\n");
    followTheChain();
    addMediaPackages(4);
    {
        const SignalStorm storm;
        [pane InstallCDComponents:nil];
        ASSERT_TRUE(waitUntil([this] { return [log countOf:@"CDInstallComplete"] == 1; }, 60.0));
    }
    // One after another: had a signal ended the reading of one, the next would have begun before its end.
    EXPECT_EQ(contentsOf(journal), "begin\nend\nbegin\nend\nbegin\nend\nbegin\nend\n");
    for (NSString *word in [outcomes allValues])
        EXPECT_EQ(text(word), "PIPE END");
    EXPECT_EQ([outcomes count], 4U);
    // The last percentage of the last package was read whole.
    EXPECT_EQ(processCounter("cdInstallIndex"), 3);
    EXPECT_DOUBLE_EQ(field<double>(pane, "mProgressindicatorValue"), 10.0);
}
