#include "ui/TableRows.hpp"
#import <Cocoa/Cocoa.h>

#include <functional>
#include <mutex>
#include <vector>

@class VantInstallation;
@class VantTableSight;

/// An object of the nib that brings the pane's rows to the component table and shows in them how the run goes.
///
/// Only the spinner of the row at work turns, and only in sight. The table keeps the rows that it shows, so that it can
/// be drawn when its pane has gone. Main thread, but for what says otherwise.
@interface VantComponentTable : NSObject {
    IBOutlet NSTableView *table;
    VantInstallation *pane; // not retained; nil when it has gone
    std::mutex paneLock;    // a pane may be destroyed on an installer thread
    NSArray *rows;
    NSArray *entries;
    std::size_t rowCount;
    std::vector<std::string> keys;
    vant::TableRows states;
    VantTableSight *sight;
    BOOL settling;
}
/// The pane that owns the nib; nil from the pane itself as it is destroyed. Any thread.
- (void)setPane:(VantInstallation *)thePane;
/// Changes what is known of the rows, on the main thread, later and in order. Any thread.
- (void)change:(std::function<void(vant::TableRows &)>)change;
@end
