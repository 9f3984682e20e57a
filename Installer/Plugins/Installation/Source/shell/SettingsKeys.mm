#import "shell/SettingsKeys.h"

NSString *const VantSmartUpdateKey = @"Smart Update";
NSString *const VantWebErrorKey = @"WebError";
NSString *const VantDebugKey = @"Debug";
NSString *const VantWithoutConnectionKey = @"VantWithoutConnection";
NSString *const VantModelsKey = @"MODELS";
NSString *const VantPackagesInfoKey = @"PackagesInfo";
NSString *const VantScanDriver1Key = @"Scan Driver1";
NSString *const VantScanDriver1LocationKey = @"LOCATION";

NSString *const VantModelObserverKey = @"Model Observer";
NSString *const VantVendorNameKey = @"VendorName";
