#import <Foundation/Foundation.h>

/// Posted on the main thread, on the default centre, without an object.
extern NSString *const VantWebDownloadStartNotification;  ///< user information: "TEST", the pane
extern NSString *const VantDownloadInfoNotification;      ///< user information: "Download", "Path"
extern NSString *const VantDownloadCompletedNotification; ///< user information: "Download"
extern NSString *const VantUnzipCompletedNotification;    ///< user information: "path", "BDObject"

extern NSString *const VantTestKey;
extern NSString *const VantDownloadKey;
extern NSString *const VantDownloadPathKey;
extern NSString *const VantExpandedPathKey;
