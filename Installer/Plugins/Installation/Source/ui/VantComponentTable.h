#import <Cocoa/Cocoa.h>

@class VantInstallation;

/// An object of the interface description that brings the pane's rows to the component table: their check box, spinner,
/// bar and name, from the media selection or the web selection, whichever the pane works on.
///
/// The indicators of the rows in sight are subviews of the table, so that the cells can lay them over themselves; those
/// of all other rows are taken out and stand still. Main thread.
@interface VantComponentTable : NSObject {
    VantInstallation *pane;
    IBOutlet NSTableView *table;
    NSMutableArray *shown;
    NSMutableIndexSet *installed;
    BOOL settling;
}
/// The pane, which owns this object's interface description; not retained.
- (void)setPane:(VantInstallation *)thePane;
@end
