#import "shell/Notifications.h"

NSString *const VantWebDownloadStartNotification = @"webDownloadStartNotification";
// The doubled last letter is part of the protocol between the pane and those that watch it.
NSString *const VantDownloadInfoNotification = @"downloadinfoo";
NSString *const VantDownloadCompletedNotification = @"downloadcompleted";
NSString *const VantUnzipCompletedNotification = @"unzipcompleted";
NSString *const VantInstallNextSUComponentNotification = @"InstallNextSUComponent";
NSString *const VantSUInstallCompleteNotification = @"SUInstallComplete";
NSString *const VantInstallNextCDComponentNotification = @"InstallNextCDComponent";
NSString *const VantCDInstallCompleteNotification = @"CDInstallComplete";
NSString *const VantFindInstallFile3Notification = @"FindInstallFile3";
NSString *const VantFindInstallFileNotification = @"FindInstallFile";

NSString *const VantTestKey = @"TEST";
NSString *const VantDownloadKey = @"Download";
NSString *const VantDownloadPathKey = @"Path";
NSString *const VantExpandedPathKey = @"path";
