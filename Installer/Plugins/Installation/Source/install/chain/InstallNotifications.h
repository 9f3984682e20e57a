#import <Foundation/Foundation.h>

/// Posted on an installer thread, on the default centre, when a package has ended. The "next" pair carries the next
/// record as its object; the others carry nothing.
extern NSString *const VantInstallNextSUComponentNotification;
extern NSString *const VantSUInstallCompleteNotification;
extern NSString *const VantInstallNextCDComponentNotification;
extern NSString *const VantCDInstallCompleteNotification;
/// The media flow's end when a package failed. Nobody observes it: the pane stays as it is.
extern NSString *const VantFindInstallFile3Notification;
/// Registered for, and posted by nobody.
extern NSString *const VantFindInstallFileNotification;
