#import <Cocoa/Cocoa.h>
#include <cstddef>
#include <optional>

/// Whoever has the rows of a table in sight.
@protocol VantRowIndicators
/// The indicators of a row, nil beyond the last one.
- (NSArray *)indicatorsOfRow:(NSInteger)row;
/// Other rows have come into sight.
- (void)sightChanged;
@end

/// The part of a table that is in sight: keeps the indicators of its rows, and of no others, among the table's
/// subviews, and brings rows into sight until the person has scrolled. Main thread.
@interface VantTableSight : NSObject {
    NSTableView *table;
    id<VantRowIndicators> owner;
    NSMutableArray *shown;
    NSRect bounds;
    std::optional<std::size_t> followed;
    BOOL following;
    BOOL scrolledByPerson;
}
/// Neither the table nor the owner is retained; both must outlive the sight.
- (id)initWithTable:(NSTableView *)theTable owner:(id<VantRowIndicators>)theOwner;
/// The table has other rows, which it may not have counted yet.
- (void)rowsChanged;
/// Looks again which rows are in sight.
- (void)update;
/// Brings a row into sight, once for each time that it is another one.
- (void)follow:(std::optional<std::size_t>)row;
@end
