#import "ui/VantTableSight.h"

#import "base/Retained.h"

@implementation VantTableSight

- (id)initWithTable:(NSTableView *)theTable owner:(id<VantRowIndicators>)theOwner {
    self = [super init];
    if (self == nil)
        return nil;
    table = theTable;
    owner = theOwner;
    shown = [[NSMutableArray alloc] init];
    NSView *clip = [table superview];
    bounds = [clip bounds];
    [self fitLastColumn];
    [clip setPostsBoundsChangedNotifications:YES];
    [clip setPostsFrameChangedNotifications:YES];
    NSNotificationCenter *centre = [NSNotificationCenter defaultCenter];
    [centre addObserver:self selector:@selector(clipChanged:) name:NSViewBoundsDidChangeNotification object:clip];
    [centre addObserver:self selector:@selector(clipChanged:) name:NSViewFrameDidChangeNotification object:clip];
    return self;
}

- (void)dealloc {
    [[NSNotificationCenter defaultCenter] removeObserver:self];
    [shown release];
    [super dealloc];
}

- (void)clipChanged:(NSNotification *)notification {
    const NSRect now = [[notification object] bounds];
    // A window of another size moves the rows as well, and so does a row that is followed.
    if (!following && NSEqualSizes(now.size, bounds.size) && !NSEqualPoints(now.origin, bounds.origin))
        scrolledByPerson = YES;
    bounds = now;
    [self fitLastColumn];
    [self update];
}

// By hand: a table that has grown with its place finds no room left to give to a column.
- (void)fitLastColumn {
    const NSInteger last = [table numberOfColumns] - 1;
    const CGFloat room = NSWidth(bounds) - NSMinX([table rectOfColumn:last]) - [table intercellSpacing].width;
    NSTableColumn *column = [[table tableColumns] lastObject];
    if (room != [column width])
        [column setWidth:room];
}

- (void)follow:(std::optional<std::size_t>)row {
    if (scrolledByPerson || !row || row == followed)
        return;
    followed = row;
    following = YES;
    [table scrollRowToVisible:static_cast<NSInteger>(*row)];
    following = NO;
}

- (NSMutableArray *)indicatorsInSight {
    NSMutableArray *indicators = [NSMutableArray array];
    const NSRange range = [table rowsInRect:[table visibleRect]];
    for (NSUInteger row = range.location; row < NSMaxRange(range); ++row) {
        NSArray *own = [owner indicatorsOfRow:static_cast<NSInteger>(row)];
        if (own == nil)
            break;
        [indicators addObjectsFromArray:own];
    }
    return indicators;
}

// Somebody may have asked for the rows before the table counted them, and it finds only rows in sight that it has
// counted.
- (void)rowsChanged {
    [table noteNumberOfRowsChanged];
    [self update];
}

- (void)update {
    const auto before = vant::Retained<NSMutableArray>::retain(shown);
    vant::hold(shown, [self indicatorsInSight]);
    for (NSView *indicator in before.get())
        if ([shown indexOfObjectIdenticalTo:indicator] == NSNotFound)
            [indicator removeFromSuperview];
    for (NSView *indicator in shown)
        if ([indicator superview] != table)
            [self add:indicator];
    [owner sightChanged];
}

- (void)add:(NSView *)indicator {
    [table addSubview:indicator];
    // The cells lay the new indicators over themselves as they are drawn.
    [table setNeedsDisplayInRect:[table visibleRect]];
}

@end
