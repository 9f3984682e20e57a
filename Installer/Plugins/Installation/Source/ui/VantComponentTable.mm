#import "ui/VantComponentTable.h"

#import "base/MainQueue.h"
#import "base/PropertyList.h"
#import "base/Retained.h"
#import "download/BDObject.h"
#import "selection/ComponentRecord.h"
#import "selection/SelectionEntry.h"
#import "shell/VantInstallation.h"
#import "ui/BDContinuousProgressCell.h"
#import "ui/BDDiscreteProgressCell.h"
#import "ui/VantComponentTable+Installation.h"

@implementation VantComponentTable

- (void)setPane:(VantInstallation *)thePane {
    pane = thePane;
}

- (void)awakeFromNib {
    shown = [[NSMutableArray alloc] init];
    installed = [[NSMutableIndexSet alloc] init];
    [table setDataSource:(id)self];
    [table setDelegate:(id)self];
    [self watchSight];
    [self watchInstallation];
    // The rows of the web selection come without a reload of their own, while the pane is being created.
    [table performSelector:@selector(reloadData) withObject:nil afterDelay:0.0];
}

- (void)watchSight {
    NSView *clip = [table superview];
    [clip setPostsBoundsChangedNotifications:YES];
    [clip setPostsFrameChangedNotifications:YES];
    NSNotificationCenter *centre = [NSNotificationCenter defaultCenter];
    [centre addObserver:self selector:@selector(sightChanged:) name:NSViewBoundsDidChangeNotification object:clip];
    [centre addObserver:self selector:@selector(sightChanged:) name:NSViewFrameDidChangeNotification object:clip];
}

- (void)dealloc {
    [[NSNotificationCenter defaultCenter] removeObserver:self];
    [shown release];
    [installed release];
    [super dealloc];
}

- (NSArray *)mediaRows {
    return [pane valueForKey:@"objects1"];
}

- (NSArray *)rows {
    NSArray *media = [self mediaRows];
    return [media count] > 0 ? media : [pane valueForKey:@"objects"];
}

- (NSArray *)entries {
    return [pane valueForKey:[[self mediaRows] count] > 0 ? @"selectedarrXML1" : @"selectedarrXML"];
}

- (BDObject *)rowAtIndex:(NSInteger)index {
    NSArray *rows = [self rows];
    return index >= 0 && (NSUInteger)index < [rows count] ? [rows objectAtIndex:(NSUInteger)index] : nil;
}

- (NSString *)nameOfRow:(NSInteger)index {
    NSArray *entries = [self entries];
    if (index < 0 || (NSUInteger)index >= [entries count])
        return @"";
    NSString *name = VantEntryText([entries objectAtIndex:(NSUInteger)index], VantTypeKey);
    return name == nil ? @"" : [pane localizedStringForKey:name];
}

- (NSInteger)numberOfRowsInTableView:(NSTableView *)tableView {
    [self rowsChanged];
    return (NSInteger)[[self rows] count];
}

- (id)tableView:(NSTableView *)tableView objectValueForTableColumn:(NSTableColumn *)column row:(NSInteger)index {
    NSString *identifier = [column identifier];
    if ([identifier isEqualToString:@"check"])
        return @([[self rowAtIndex:index] getCheckBTStatus]);
    return [identifier isEqualToString:@"name"] ? [self nameOfRow:index] : @"";
}

- (NSProgressIndicator *)indicatorOfColumn:(NSTableColumn *)column row:(NSInteger)index {
    if ([[column identifier] isEqualToString:@"spinner"])
        return [[self rowAtIndex:index] continuousProgress];
    if ([[column identifier] isEqualToString:@"bar"])
        return [[self rowAtIndex:index] discreteProgress];
    return nil;
}

- (void)tableView:(NSTableView *)tableView
    willDisplayCell:(id)cell
     forTableColumn:(NSTableColumn *)column
                row:(NSInteger)index {
    NSProgressIndicator *indicator = [self indicatorOfColumn:column row:index];
    if (![cell respondsToSelector:@selector(setProgress:)])
        return;
    // A copy of the column's cell gives up an indicator that it does not own when it takes another.
    if (cell != [column dataCell])
        [(id)[cell progress] retain];
    [cell performSelector:@selector(setProgress:) withObject:indicator];
}

// Deferred, and once for all changes of a turn of the run loop: views are not moved in the middle of a reload.
- (void)rowsChanged {
    if (settling)
        return;
    settling = YES;
    auto owner = vant::Retained<VantComponentTable>::retain(self);
    vant::onMainQueue([owner] { [owner.get() settleRows]; });
}

// Rows are born with their spinners turning, in sight or not; a thousand of them would keep the machine busy.
- (void)settleRows {
    settling = NO;
    for (BDObject *row in [self rows])
        if ([[row continuousProgress] superview] != table)
            [[row continuousProgress] stopAnimation:self];
    [self showIndicatorsInSight];
}

- (void)sightChanged:(NSNotification *)notification {
    (void)notification;
    [self showIndicatorsInSight];
}

- (NSMutableArray *)indicatorsInSight {
    NSMutableArray *indicators = [NSMutableArray array];
    const NSRange sight = [table rowsInRect:[table visibleRect]];
    for (NSUInteger index = sight.location; index < NSMaxRange(sight); ++index) {
        BDObject *row = [self rowAtIndex:(NSInteger)index];
        if (row == nil)
            break;
        [indicators addObject:[row continuousProgress]];
        [indicators addObject:[row discreteProgress]];
    }
    return indicators;
}

- (void)showIndicatorsInSight {
    vant::Retained<NSMutableArray> before = vant::Retained<NSMutableArray>::retain(shown);
    vant::hold(shown, [self indicatorsInSight]);
    for (NSProgressIndicator *indicator in before.get())
        if ([shown indexOfObjectIdenticalTo:indicator] == NSNotFound)
            [self takeOut:indicator];
    for (NSProgressIndicator *indicator in shown)
        if ([indicator superview] != table)
            [self putIn:indicator];
    [self stopSpinnersOfInstalledRows];
}

- (void)takeOut:(NSProgressIndicator *)indicator {
    [indicator stopAnimation:self];
    [indicator removeFromSuperview];
}

- (void)putIn:(NSProgressIndicator *)indicator {
    [table addSubview:indicator];
    [indicator startAnimation:self];
    // The cells lay the new indicators over themselves as they are drawn.
    [table setNeedsDisplayInRect:[table visibleRect]];
}

- (void)stopSpinnersOfInstalledRows {
    for (NSUInteger index = [installed firstIndex]; index != NSNotFound;
         index = [installed indexGreaterThanIndex:index])
        [[[self rowAtIndex:(NSInteger)index] continuousProgress] stopAnimation:self];
}

@end
