#import "PaneTest.h"

#import "ui/VantInstallation+AdministratorRights.h"
#import "ui/VantInstallation+Views.h"

#include <cstdlib>
#include <dlfcn.h>

using namespace vant::test;

namespace {

/// What the pane has put off, and what it was asked, in order.
std::vector<std::string> journal;

void noteDelay(id, SEL, SEL operation, id argument, NSTimeInterval delay) {
    EXPECT_EQ(argument, nil);
    journal.push_back(text(NSStringFromSelector(operation)) + " after " + std::to_string(delay));
}

NSString *noteThirdButton(id self, SEL) {
    journal.emplace_back(field<BOOL>(self, "mAuthCancelledOrError") ? "asked when invalid" : "asked when valid");
    return @"";
}

/// In place of the prompt: somebody presses both buttons and leaves it unanswered, which is a refusal.
void pressAndLeave(id, SEL) {
    for (const NSEventType button : {NSLeftMouseDown, NSRightMouseDown})
        [NSApp postEvent:mouseEvent(button) atStart:NO];
}

id takenPress(NSUInteger mask) {
    return [NSApp nextEventMatchingMask:mask untilDate:[NSDate distantPast] inMode:NSDefaultRunLoopMode dequeue:YES];
}

/// Whether a handle holds a right already, without asking anybody: the answer of the loaded bundle's authorization.
OSStatus rightOf(AuthorizationRef handle, const char *name) {
    using CopyRights = OSStatus(AuthorizationRef, const AuthorizationRights *, const AuthorizationEnvironment *,
                                AuthorizationFlags, AuthorizationRights **);
    void *image = dlopen(VANT_TEST_BUNDLE "/VantInstallation", RTLD_LAZY | RTLD_NOLOAD);
    auto *copyRights = reinterpret_cast<CopyRights *>(dlsym(image, "AuthorizationCopyRights"));
    AuthorizationItem item = {name, 0, nullptr, 0};
    const AuthorizationRights rights = {1, &item};
    return copyRights(handle, &rights, nullptr, kAuthorizationFlagDefaults, nullptr);
}

} // namespace

class Rights : public PaneTest {
protected:
    Rights() { createIdlePane(); }

    AuthorizationRef handle() { return field<AuthorizationRef>(pane, "authorizationRef"); }
    static void refuse() { setenv("VANT_AUTHORIZATION", "cancel", 1); }
};

TEST_F(Rights, AreThoseOfAnAdministratorAndStayWithTheHandle) {
    ASSERT_TRUE([pane obtainAdministratorRights]);
    EXPECT_EQ(rightOf(handle(), "system.privilege.admin"), errAuthorizationSuccess);
    EXPECT_NE(rightOf(handle(), "another"), errAuthorizationSuccess);
}

TEST_F(Rights, OfARefusedHandleCannotBeAskedForAgain) {
    refuse();
    ASSERT_FALSE([pane obtainAdministratorRights]);
    EXPECT_EQ(rightOf(handle(), "system.privilege.admin"), errAuthorizationInvalidRef) << "the handle was not freed";
}

TEST_F(Rights, ClicksQueuedDuringARefusedPromptAreDiscardedToo) {
    refuse();
    [NSApp postEvent:mouseEvent(NSLeftMouseDown) atStart:NO];
    EXPECT_FALSE([pane obtainAdministratorRights]);
    EXPECT_EQ(takenPress(NSLeftMouseDownMask), nil);
}

TEST_F(Rights, ClicksMadeWhileThePromptIsUpAreDiscardedOnceItIsAnswered) {
    setenv("VANT_AUTHORIZATION", "ask", 1);
    method_setImplementation(
        class_getInstanceMethod(bundleClass(@"VantAuthorizationPanel"), NSSelectorFromString(@"runModal")),
        reinterpret_cast<IMP>(pressAndLeave));
    EXPECT_FALSE([pane obtainAdministratorRights]);
    EXPECT_EQ(takenPress(NSLeftMouseDownMask), nil);
    EXPECT_NE(takenPress(NSRightMouseDownMask), nil) << "nothing was pressed";
}

TEST_F(Rights, ARefusedPaneGoesBackATenthOfASecondLater) {
    // Soon, but not before the host has got its pane from the creation that the prompt belongs to.
    refuse();
    class_addMethod(paneClass(), @selector(performSelector:withObject:afterDelay:), reinterpret_cast<IMP>(noteDelay),
                    "v@::@d");
    EXPECT_FALSE([pane obtainAdministratorRights]);
    EXPECT_EQ(journal, std::vector<std::string>{"showBackPaneView after " + std::to_string(0.1)});
}

TEST_F(Rights, GoingBackAsksForTheThirdButtonOfAPaneThatIsInvalid) {
    method_setImplementation(class_getInstanceMethod(paneClass(), @selector(performButton3Action)),
                             reinterpret_cast<IMP>(noteThirdButton));
    [pane showBackPaneView];
    EXPECT_EQ(journal, std::vector<std::string>{"asked when invalid"});
}
