#import "install/chain/InstallNotifications.h"

NSString *const VantInstallNextSUComponentNotification = @"InstallNextSUComponent";
NSString *const VantSUInstallCompleteNotification = @"SUInstallComplete";
NSString *const VantInstallNextCDComponentNotification = @"InstallNextCDComponent";
NSString *const VantCDInstallCompleteNotification = @"CDInstallComplete";
NSString *const VantFindInstallFile3Notification = @"FindInstallFile3";
NSString *const VantFindInstallFileNotification = @"FindInstallFile";
