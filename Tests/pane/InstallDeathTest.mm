#import "install/chain/VantInstallation+InstallChain.h"
#import "install/package/VantInstallation+PackageInstaller.h"

#import "InstallTest.h"
#include "Jail.hpp"

using namespace vant::test;

/// What must end the process, in release builds too.
class InstallDeathTest : public InstallTest {
protected:
    /// Runs the media operation on a thread of its own and goes on until the process has died; returns when it does
    /// not.
    void installUntilTheEnd(NSDictionary *record) {
        [NSThread detachNewThreadSelector:@selector(installCDComponentAtPath:) toTarget:pane withObject:record];
        static_cast<void>(waitUntil([] { return false; }, 10.0));
    }

    void reachThePercent100LineWithStatus(int status) {
        const std::string go = (scratch / "go").string();
        setInstaller("echo 'installer:%5.0'\nwhile [ ! -e '" + go + "' ]; do sleep 0.02; done\necho '%100'\n");
        addMediaPackages(2);
        [NSThread detachNewThreadSelector:@selector(installCDComponentAtPath:)
                                 toTarget:pane
                               withObject:[mediaList objectAtIndex:0]];
        static_cast<void>(readsProgress());
        [pane setValue:@(status) forKey:@"status"];
        writeFile(go, "");
        static_cast<void>(waitUntil([&] { return [[log names] count] > 0; }));
    }
};

TEST_F(InstallDeathTest, TwoRecordsOfOneFileNameRunPastTheEndOfTheList) {
    EXPECT_DEATH(
        {
            followTheChain();
            addMedia(@"Fax", @"/media/one/Fax.pkg");
            addMedia(@"Fax", @"/media/two/Fax.pkg");
            installUntilTheEnd([mediaList objectAtIndex:0]);
        },
        "NSRangeException");
}

TEST_F(InstallDeathTest, AStartBehindTheEndOfTheListRaises) {
    addMediaPackages(1);
    processCounter("cdInstallIndex") = 1;
    @try {
        [pane InstallCDComponents:nil];
        FAIL() << "nothing was raised";
    } @catch (NSException *raised) {
        EXPECT_EQ(text([raised name]), "NSRangeException");
    }
}

TEST_F(InstallDeathTest, AStatusThatIsNoSuccessContradictsASuccessfulEnd) {
    EXPECT_DEATH(reachThePercent100LineWithStatus(-1), "status == noErr");
}

TEST_F(InstallDeathTest, ASuccessfulEndWithItsStatusGoesOn) {
    reachThePercent100LineWithStatus(0);
    EXPECT_EQ([[log names] count], 1U);
}
