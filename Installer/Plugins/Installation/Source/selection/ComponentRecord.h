#import <Foundation/Foundation.h>

/// Keys of a selection entry and of a media record.
extern NSString *const VantLocationKey;
extern NSString *const VantTypeKey;

/// Keys of a web record.
extern NSString *const VantInstallerPathKey;
extern NSString *const VantComponentNameKey;
/// Where a web record came from: the download's delegate, or one of the two origins below. Also a key of the user
/// information of "unzipcompleted".
extern NSString *const VantBDObjectKey;
extern NSString *const VantManualOrigin;
extern NSString *const VantUninstallerOrigin;

/// Component kinds that the pane adds or looks for itself.
extern NSString *const VantScanDriverKind;
extern NSString *const VantUninstallerKind;
extern NSString *const VantManualKind;

/// A media record; an absent value leaves its key out.
NSMutableDictionary *VantMediaRecord(NSString *location, NSString *kind);

/// A web record; an absent value leaves its key out.
NSMutableDictionary *VantWebRecord(NSString *installerPath, NSString *componentName, id origin);

/// A web record for a package among the resources of the host application; without a path when the host lacks it.
NSMutableDictionary *VantHostPackageRecord(NSString *resource, NSString *componentName, NSString *origin);
