#import "selection/VantInstallation+WebList.h"
#import "WebTest.h"

#include "Jail.hpp"

using namespace vant::test;

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

/// The web list between the last archive and the first package.
class WebList : public WebTest {
protected:
    std::string markOf(NSUInteger index) { return text([[webList objectAtIndex:index] objectForKey:@"BDObject"]); }

    std::string uninstaller = hostResource("Uninstaller.pkg").string();
};

TEST_F(WebList, OfOnePackageTheRecordThatTheOrderPutsFirstStays) {
    addWeb(@"Fax.pkg", @"/web/A.pkg");
    addWeb(@"Print Driver", @"/web/A.pkg");
    [pane arrangeWebList];
    EXPECT_EQ(listedNames(), (Texts{"Print Driver", "Printer Software Uninstaller"}));
}

TEST_F(WebList, APackageIsNotInstalledUnderAnotherNameOnceItsLegacyRecordHasGone) {
    // Of one package the first record decides, and only then is it looked at whether it is a legacy one.
    addWeb(@"Scanmate.pkg", @"/web/A.pkg");
    addWeb(@"User's Guide", @"/web/A.pkg");
    [pane arrangeWebList];
    EXPECT_EQ(listedNames(), Texts{"Printer Software Uninstaller"});
}

TEST_F(WebList, TheUninstallerComesLastWhateverTheOrderSaysOfIt) {
    addWeb(@"User's Guide", @"/web/Guide.pkg");
    addWeb(@"Fax.pkg", @"/web/Fax.pkg");
    addWeb(@"Printer Driver.pkg", @"/web/Driver.pkg");
    [pane arrangeWebList];
    EXPECT_EQ(listedPaths(), (Texts{"/web/Driver.pkg", "/web/Fax.pkg", "/web/Guide.pkg", uninstaller}));
    EXPECT_EQ(markOf(3), "Uninstaller");
}

TEST_F(WebList, AnUninstallerOfTheWebKeepsItsPlace) {
    addWeb(@"Printer Software Uninstaller", @"/web/Uninstaller.pkg");
    addWeb(@"User's Guide", @"/web/Guide.pkg");
    [pane arrangeWebList];
    EXPECT_EQ(listedPaths(), (Texts{"/web/Uninstaller.pkg", "/web/Guide.pkg"}));
}

TEST_F(WebList, IsCompletedWithTheManualOnlyWhenThereIsOneAndWithTheUninstaller) {
    [pane completeWebList];
    EXPECT_EQ(listedNames(), Texts{"Printer Software Uninstaller"});
    [webList removeAllObjects];
    fs::create_directories(media() / "MANUAL" / "Q200");
    writeSettings(@{@"VantWithoutConnection" : @"no", @"MODELS" : @[ @"Q200" ]});
    [pane completeWebList];
    EXPECT_EQ(listedNames(), (Texts{"User's Guide", "Printer Software Uninstaller"}));
    EXPECT_EQ(listedPaths(), (Texts{hostResource("Manual.pkg").string(), uninstaller}));
    EXPECT_EQ(markOf(0), "MANUAL");
    EXPECT_EQ(markOf(1), "Uninstaller");
}
