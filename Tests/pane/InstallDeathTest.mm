#import "install/chain/VantInstallation+InstallChain.h"
#import "install/package/VantInstallation+PackageInstaller.h"
#import "install/profiles/VantInstallation+ICCProfiles.h"

#import "InstallTest.h"
#include "Jail.hpp"

using namespace vant::test;

namespace {

int givenStatus = 0;

/// Between the launch and the first line, on the installer thread that owns the field.
void giveStatus(id pane, SEL /*operation*/, NSString * /*packageFileName*/) {
    [pane setValue:@(givenStatus) forKey:@"status"];
}

} // namespace

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
        setInstaller("echo '%100'\n");
        addMediaPackages(2);
        givenStatus = status;
        Method profiles = class_getInstanceMethod([pane class], @selector(installICCProfilesIfRequired:));
        method_setImplementation(profiles, reinterpret_cast<IMP>(giveStatus));
        static_cast<void>(installMedia([mediaList objectAtIndex:0]));
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
