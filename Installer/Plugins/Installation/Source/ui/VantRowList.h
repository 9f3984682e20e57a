#import <Cocoa/Cocoa.h>

/// A table that is looked at: it takes the keys only when there is something to do with them, which is to scroll. Main
/// thread.
@interface VantRowList : NSTableView
@end
