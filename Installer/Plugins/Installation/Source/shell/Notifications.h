#import <Foundation/Foundation.h>

// The steps of a run are joined by these notifications of the default centre. They are delivered on the posting thread,
// so a handler runs where the step before it ended. `Documentation/flows.md` shows them in order.

/// A download has been started; posted once per download, before its destination is set.
/// Posted by: `webDriverDownloading:`. Thread: main. Handled by: `ReNotification:`. Carries: "TEST", the pane.
extern NSString *const VantWebDownloadStartNotification;

/// A download has created its destination file.
/// Posted by: `download:didCreateDestination:`. Thread: main. Handled by: `receivedownloadNotification:` and the
/// component table. Carries: "Download", the download's delegate; "Path", the file.
extern NSString *const VantDownloadInfoNotification;

/// A download has finished, and so has every download whose file was created before.
/// Posted by: `downloadDidFinish:`, `download:didFailWithError:`. Thread: main.
/// Handled by: `receivedownloadNotification:`. Carries: "Download", the download's delegate.
extern NSString *const VantDownloadCompletedNotification;

/// An archive has been expanded, or could not be.
/// Posted by: `receivedownloadNotification:`. Thread: main. Handled by: `receiveunzipNotification:` and the component
/// table. Carries: "path", the folder; "BDObject", the download's delegate.
extern NSString *const VantUnzipCompletedNotification;

/// A package of the web list has ended and another follows.
/// Posted by: `installCompoentAtPath:`. Thread: installer. Handled by: `receiveNotification1:` and the component
/// table. Carries: the next web record, as the object.
extern NSString *const VantInstallNextSUComponentNotification;

/// The last package of the web list has ended.
/// Posted by: `installCompoentAtPath:`. Thread: installer. Handled by: `receiveNotification1:` and the component table.
/// Carries: nothing.
extern NSString *const VantSUInstallCompleteNotification;

/// A package of the media list has ended and another follows.
/// Posted by: `installCDComponentAtPath:`. Thread: installer. Handled by: `receiveNotification1:` and the component
/// table. Carries: the next media record, as the object.
extern NSString *const VantInstallNextCDComponentNotification;

/// The last package of the media list has ended and none has failed.
/// Posted by: `installCDComponentAtPath:`. Thread: installer. Handled by: `receiveNotification1:` and the component
/// table. Carries: nothing.
extern NSString *const VantCDInstallCompleteNotification;

/// The last package of the media list has ended and one has failed.
/// Posted by: `installCDComponentAtPath:`. Thread: installer. Handled by: the component table; the pane stays
/// as it is. Carries: nothing.
extern NSString *const VantFindInstallFile3Notification;

/// Registered for in the web flow, by name alone.
/// Posted by: nobody. Thread: any. Handled by: `receiveNotification:`, which does nothing. Carries: nothing.
extern NSString *const VantFindInstallFileNotification;

/// Keys of the user information that the notifications above carry. "BDObject" is a key of web records too:
/// `VantBDObjectKey`.
extern NSString *const VantTestKey;
extern NSString *const VantDownloadKey;
extern NSString *const VantDownloadPathKey;
extern NSString *const VantExpandedPathKey;
