#import <Foundation/Foundation.h>

/// How a package ended: the values of `mInstalledPackageDict`, whose keys are package file names. A later word replaces
/// an earlier one.
extern NSString *const VantOutcomeCompleted; ///< a progress line reported 100
extern NSString *const VantOutcomePipeEnd;   ///< the installer's output ended
extern NSString *const VantOutcomeFailed;
