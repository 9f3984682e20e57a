#import "PaneTest.h"

#import "download/VantInstallation+WebDriver.h"
#import "ui/VantInstallation+Views.h"

#include <cstdlib>

using namespace vant::test;

namespace {

/// What the panes have registered for and started, in order.
std::vector<std::string> journal;

// The layer's own function of this operation has this type.
using Register = void (*)(NSNotificationCenter *, SEL, id, SEL, NSString *, id);
Register registerFor;

void noteRegistration(NSNotificationCenter *centre, SEL operation, id receiver, SEL handler, NSString *name,
                      id sender) {
    if ([receiver isKindOfClass:paneClass()])
        journal.push_back(text(name) + " " + text(NSStringFromSelector(handler)) +
                          (sender == nil ? "" : " of one sender"));
    registerFor(centre, operation, receiver, handler, name, sender);
}

void noteDownload(id, SEL, NSString *) {
    journal.emplace_back("download");
}

using Journal = std::vector<std::string>;

const std::string start = "webDownloadStartNotification ReNotification:";

} // namespace

/// Which notifications each view hears, by which handler, and from when on: all of them, and no other.
class Handlers : public PaneTest {
protected:
    Handlers() {
        createIdlePane();
        Method add = class_getInstanceMethod([NSNotificationCenter class], @selector(addObserver:
                                                                                        selector:name:object:));
        registerFor =
            reinterpret_cast<Register>(method_setImplementation(add, reinterpret_cast<IMP>(noteRegistration)));
        method_setImplementation(class_getInstanceMethod(paneClass(), @selector(webDriverDownloading:)),
                                 reinterpret_cast<IMP>(noteDownload));
        field<id>(pane, "objects") = [[NSMutableArray alloc] init];
        field<id>(pane, "objects1") = [[NSMutableArray alloc] init];
        field<id>(pane, "selectedarrXML") = field<id>(pane, "selectedarrXML1") =
            [@[ entry(@"Print Driver", @"http://127.0.0.1:1/a.zip") ] retain];
    }

    static void refuseRights() { setenv("VANT_AUTHORIZATION", "cancel", 1); }
};

TEST_F(Handlers, OfTheWebViewFollowTheGrantAndTheDownloads) {
    [pane showNormalView];
    EXPECT_EQ(journal,
              (Journal{start, "download",
                       "FindInstallFile receiveNotification:", "downloadinfoo receivedownloadNotification:",
                       "downloadcompleted receivedownloadNotification:", "unzipcompleted receiveunzipNotification:",
                       "SUInstallComplete receiveNotification1:", "InstallNextSUComponent receiveNotification1:"}));
}

TEST_F(Handlers, OfTheMediaViewAreTheStartAndThoseOfItsPackages) {
    [pane showNormalViewforCDInstallation];
    EXPECT_EQ(
        journal,
        (Journal{start, "CDInstallComplete receiveNotification1:", "InstallNextCDComponent receiveNotification1:"}));
}

TEST_F(Handlers, OfAViewWhosePromptWasRefusedAreTheStartAlone) {
    refuseRights();
    [pane showNormalView];
    [pane showNormalViewforCDInstallation];
    EXPECT_EQ(journal, (Journal{start, start})) << "a refused pane must not move when another installs";
}
