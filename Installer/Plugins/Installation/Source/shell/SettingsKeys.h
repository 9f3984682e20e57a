#import <Foundation/Foundation.h>

/// Keys of the user settings file. Switches are strings, compared exactly.
extern NSString *const VantSmartUpdateKey;         ///< "1": the web flow
extern NSString *const VantWebErrorKey;            ///< "1": no web flow all the same
extern NSString *const VantDebugKey;               ///< "debug_on": the trace log
extern NSString *const VantWithoutConnectionKey;   ///< "no": manuals are looked for
extern NSString *const VantModelsKey;              ///< names of model folders
extern NSString *const VantPackagesInfoKey;        ///< dictionary
extern NSString *const VantScanDriver1Key;         ///< dictionary in it
extern NSString *const VantScanDriver1LocationKey; ///< the second scan driver's path

/// Keys of the model record.
extern NSString *const VantModelObserverKey;
extern NSString *const VantVendorNameKey;
