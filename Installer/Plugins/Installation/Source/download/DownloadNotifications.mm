#import "download/DownloadNotifications.h"

NSString *const VantWebDownloadStartNotification = @"webDownloadStartNotification";
// The doubled last letter is part of the protocol between the pane and those that watch it.
NSString *const VantDownloadInfoNotification = @"downloadinfoo";
NSString *const VantDownloadCompletedNotification = @"downloadcompleted";
NSString *const VantUnzipCompletedNotification = @"unzipcompleted";

NSString *const VantTestKey = @"TEST";
NSString *const VantDownloadKey = @"Download";
NSString *const VantDownloadPathKey = @"Path";
NSString *const VantExpandedPathKey = @"path";
