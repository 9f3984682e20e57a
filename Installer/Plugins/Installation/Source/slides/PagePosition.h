#import <AppKit/AppKit.h>

/// "Page 1 of 2" for page 0 of an indicator of two pages, in the user's language. Main thread.
NSString *VantPagePosition(NSInteger page, NSMatrix *indicator);
