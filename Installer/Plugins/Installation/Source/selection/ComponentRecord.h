#import <Foundation/Foundation.h>

/// Keys of a selection entry and of a media record.
extern NSString *const VantLocationKey;
extern NSString *const VantTypeKey;

/// Keys of a web record.
extern NSString *const VantInstallerPathKey;
extern NSString *const VantComponentNameKey;
/// Where a web record came from: the download's delegate, or a word for a package of the host. Also a key of the user
/// information of "unzipcompleted".
extern NSString *const VantBDObjectKey;

/// A media record; an absent value leaves its key out.
NSMutableDictionary *VantMediaRecord(NSString *location, NSString *kind);

/// A web record; an absent value leaves its key out.
NSMutableDictionary *VantWebRecord(NSString *installerPath, NSString *componentName, id origin);

/// The web records of the manual and the uninstaller among the host application's resources; without a path when the
/// host lacks the package.
NSMutableDictionary *VantManualRecord(void);
NSMutableDictionary *VantUninstallerRecord(void);
