#import "WebTest.h"

#import "download/VantInstallation+WebDriver.h"
#import "install/profiles/VantInstallation+ICCProfiles.h"

#include "Jail.hpp"
#include <sys/stat.h>

using namespace vant::test;
namespace fs = std::filesystem;

/// What the pane keeps under the temporary folder, when the user's mask would let everybody in.
class PrivateFolders : public WebTest {
protected:
    PrivateFolders() { umask(0); }

    static fs::perms mode(const fs::path &path) { return fs::status(path).permissions(); }
};

TEST_F(PrivateFolders, OfDownloadsAreTheUsersAlone) {
    fs::remove_all(temporary("Vantrel"));
    [pane webDriverDownloading:@"http://127.0.0.1:1/a.zip"];
    EXPECT_EQ(mode(temporary("Vantrel")), fs::perms::owner_all);
    EXPECT_EQ(mode(downloads()), fs::perms::owner_all);
}

TEST_F(PrivateFolders, OfProfilesAreTheUsersAlone) {
    fs::remove_all(temporary("Vantrel"));
    // An expander that keeps what it finds for a look at it.
    const std::string seen = (scratch / "seen").string();
    writeProgram(scratch / "bin/ditto", "#!/bin/sh\nstat -c %a '" + temporary("Vantrel/Profiles").string() + "' '" +
                                            temporary("Vantrel").string() + "' > '" + seen + "'\n");
    setenv("PATH", ((scratch / "bin").string() + ":" + std::getenv("PATH")).c_str(), 1);
    writeFile(media() / "MAC_Installer/InstallFiles/Profiles/a.zip", "any");
    [pane installICCProfilesIfRequired:@"Scanmate.pkg"];
    EXPECT_EQ(contentsOf(seen), "700\n700\n");
}

TEST_F(PrivateFolders, OfTheUsersLibraryKeepTheUsualMode) {
    writeFile(media() / "MAC_Installer/InstallFiles/Profiles/a.icc", "any");
    [pane installICCProfilesIfRequired:@"Scanmate.pkg"];
    EXPECT_NE(mode(home() / "Library/Preferences/Kelscan"), fs::perms::owner_all);
}
