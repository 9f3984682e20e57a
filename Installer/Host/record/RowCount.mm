#import "RowCount.h"

/// The media's rows when there are any, else those of the web.
static NSArray *rowsOf(id pane) {
    NSArray *media = [pane valueForKey:@"objects1"];
    return [media count] > 0 ? media : [pane valueForKey:@"objects"];
}

/// Rows out of sight keep their indicators out of the table.
static bool isInSight(NSView *indicator) {
    return [indicator superview] != nil && ![indicator isHidden];
}

std::string VantRowCount(id pane) {
    NSArray *rows = rowsOf(pane);
    int inSight = 0;
    int turning = 0;
    for (id row in rows) {
        inSight += isInSight([row valueForKey:@"discreteProgress"]) ? 1 : 0;
        turning += isInSight([row valueForKey:@"continuousProgress"]) ? 1 : 0;
    }
    return std::to_string([rows count]) + " listed, " + std::to_string(inSight) + " in sight, " +
           std::to_string(turning) + " turning";
}
