#import "install/package/InstallOutcome.h"

NSString *const VantOutcomeCompleted = @"Completed";
NSString *const VantOutcomePipeEnd = @"PIPE END";
NSString *const VantOutcomeFailed = @"Failed";
