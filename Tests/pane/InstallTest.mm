#import "InstallTest.h"

#import "download/VantInstallation+WebDriver.h"
#import "install/package/VantInstallation+PackageInstaller.h"
#import "shell/Notifications.h"
#import "ui/VantInstallation+AdministratorRights.h"

#include "Jail.hpp"

namespace fs = std::filesystem;

namespace vant::test {

// The bundle is loaded at run time, so its constants are not linked here: the names stand as they are posted.
static NSString *const endings[] = {@"InstallNextSUComponent", @"SUInstallComplete", @"InstallNextCDComponent",
                                    @"CDInstallComplete", @"FindInstallFile3"};

InstallTest::InstallTest() {
    createIdlePane();
    mediaList = field<NSMutableArray *>(pane, "mInstallCompArrayForCDUpdate");
    webList = field<NSMutableArray *>(pane, "mInstallCompArrayForSmartUpdate");
    outcomes = field<NSMutableDictionary *>(pane, "mInstalledPackageDict");
    const NSRect frame = NSMakeRect(0, 0, 200, 20);
    field<NSProgressIndicator *>(pane, "mVTPackageInstallationProg") = bar =
        [[VantRecordingBar alloc] initWithFrame:frame];
    field<NSProgressIndicator *>(pane, "mVTPackageInstallationProgDummy") = dummyBar =
        [[VantRecordingBar alloc] initWithFrame:frame];
    field<NSProgressIndicator *>(pane, "mVTPackageDownloadProg") = downloadBar =
        [[VantRecordingBar alloc] initWithFrame:frame];
    field<NSTextField *>(pane, "mProgressInfoTF") = statusLine = [[VantRecordingField alloc] initWithFrame:frame];
    [bar setIndeterminate:NO];
    for (NSString *name : endings)
        [log watch:name];
    EXPECT_TRUE([pane obtainAdministratorRights]);
    scratch = jail() / "scratch";
    fs::create_directories(scratch);
    setSuccessfulInstaller();
}

NSDictionary *InstallTest::addMedia(NSString *kind, NSString *location) {
    [mediaList addObject:@{@"TYPE" : kind, @"LOCATION" : location}];
    return [mediaList lastObject];
}

NSDictionary *InstallTest::addWeb(NSString *componentName, NSString *installerPath) {
    [webList addObject:@{@"componentname" : componentName, @"installerpath" : installerPath}];
    return [webList lastObject];
}

void InstallTest::addMediaPackages(int count) {
    for (int i = 0; i < count; ++i)
        addMedia(@"Fax", [NSString stringWithFormat:@"/media/Package %d.pkg", i]);
}

bool InstallTest::run(SEL operation, NSDictionary *record, double seconds) {
    const NSUInteger before = [[log names] count];
    [NSThread detachNewThreadSelector:operation toTarget:pane withObject:record];
    return waitUntil([&] { return [[log names] count] > before; }, seconds);
}

bool InstallTest::installMedia(NSDictionary *record, double seconds) {
    return run(@selector(installCDComponentAtPath:), record, seconds);
}

bool InstallTest::installWeb(NSDictionary *record, double seconds) {
    return run(@selector(installCompoentAtPath:), record, seconds);
}

bool InstallTest::readsProgress() {
    return waitUntil([this] { return barValue() > 0.0; });
}

void InstallTest::followTheChain() {
    for (NSString *name : endings)
        [[NSNotificationCenter defaultCenter] addObserver:pane
                                                 selector:@selector(receiveNotification1:)
                                                     name:name
                                                   object:nil];
}

std::string InstallTest::outcome(NSString *fileName) const {
    id word = [outcomes objectForKey:fileName];
    return word == nil ? std::string() : text(word);
}

std::string InstallTest::statusText() const {
    return text([statusLine stringValue]);
}

double InstallTest::barValue() const {
    return [bar doubleValue];
}

std::string InstallTest::trace() const {
    return contentsOf(traceLog());
}

int InstallTest::tracedCount(std::string_view text) const {
    const std::string written = trace();
    int count = 0;
    for (std::size_t at = written.find(text); at != std::string::npos; at = written.find(text, at + 1))
        ++count;
    return count;
}

} // namespace vant::test
