#import "ui/VantInstallation+AdministratorRights.h"

#import "shell/VantInstallation+HostLink.h"
#import "ui/VantInstallation+Views.h"

static const NSTimeInterval refusalDelay = 0.1;

/// Requests the one right that installing packages takes, letting the system ask the user.
static OSStatus requestAdministratorRight(AuthorizationRef authorization) {
    AuthorizationItem item = {"system.privilege.admin", 0, nullptr, 0};
    const AuthorizationRights rights = {1, &item};
    return AuthorizationCopyRights(authorization, &rights, kAuthorizationEmptyEnvironment,
                                   kAuthorizationFlagInteractionAllowed | kAuthorizationFlagExtendRights, nullptr);
}

/// Takes every left-mouse-down event out of the application's queue. One may be tempted to use
/// `discardEventsMatchingMask:beforeEvent:`, but without an event to stop at it discards nothing on one platform, and
/// it sees only what has been read from the window server.
static void discardQueuedClicks() {
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
    while ([NSApp nextEventMatchingMask:NSLeftMouseDownMask
                              untilDate:[NSDate distantPast]
                                 inMode:NSEventTrackingRunLoopMode
                                dequeue:YES] != nil) {
#pragma clang diagnostic pop
    }
}

@implementation VantInstallation (AdministratorRights)

- (BOOL)obtainAdministratorRights {
    status =
        AuthorizationCreate(nullptr, kAuthorizationEmptyEnvironment, kAuthorizationFlagDefaults, &authorizationRef);
    status = requestAdministratorRight(authorizationRef);
    discardQueuedClicks();
    if (status != errAuthorizationSuccess) {
        mAuthCancelledOrError = YES;
        [self performSelector:@selector(showBackPaneView) withObject:nil afterDelay:refusalDelay];
        AuthorizationFree(authorizationRef, kAuthorizationFlagDefaults);
        return NO;
    }
    [self withdrawHostButton3];
    return YES;
}

@end
