#import <Foundation/Foundation.h>

/// Keys of the user settings file. Switches are strings, compared exactly.
extern NSString *const VantSmartUpdateKey;
extern NSString *const VantWebErrorKey;
extern NSString *const VantDebugKey;
extern NSString *const VantWithoutConnectionKey;
extern NSString *const VantModelsKey;
extern NSString *const VantPackagesInfoKey;
extern NSString *const VantScanDriver1Key;
extern NSString *const VantScanDriver1LocationKey;

/// Keys of the model record.
extern NSString *const VantModelObserverKey;
extern NSString *const VantVendorNameKey;
