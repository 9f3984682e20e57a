#import "ui/VantComponentTable.h"

#import "base/Accessibility.h"
#import "base/Bridge.h"
#import "base/Locations.h"
#import "base/MainQueue.h"
#include "base/Paths.hpp"
#import "base/PropertyList.h"
#import "base/Resources.h"
#import "base/Retained.h"
#import "download/BDObject.h"
#include "install/tasks/Archives.hpp"
#import "selection/ComponentRecord.h"
#import "selection/SelectionEntry.h"
#import "shell/Notifications.h"
#import "ui/BDContinuousProgressCell.h"
#import "ui/BDDiscreteProgressCell.h"
#import "ui/RowLook.h"
#import "ui/VantInstallation+Rows.h"
#import "ui/VantTableSight.h"

@interface VantComponentTable () <VantRowIndicators>
@end

@implementation VantComponentTable

- (void)setPane:(VantInstallation *)thePane {
    const std::lock_guard lock(paneLock);
    pane = thePane;
    if (pane == nil)
        [[NSNotificationCenter defaultCenter] removeObserver:self];
}

- (void)awakeFromNib {
    [table setDataSource:(id)self];
    [table setDelegate:(id)self];
    sight = [[VantTableSight alloc] initWithTable:table owner:self];
    [self watchRun];
    [pane joinComponentTable:self];
    // The rows of the web selection come without a reload of their own, while the pane is being created.
    [table performSelector:@selector(reloadData) withObject:nil afterDelay:0.0];
}

- (void)watchRun {
    NSNotificationCenter *centre = [NSNotificationCenter defaultCenter];
    [centre addObserver:self selector:@selector(fileCreated:) name:VantDownloadInfoNotification object:nil];
    [centre addObserver:self selector:@selector(archiveExpanded:) name:VantUnzipCompletedNotification object:nil];
    for (NSString *name in @[
             VantInstallNextCDComponentNotification, VantCDInstallCompleteNotification,
             VantFindInstallFile3Notification, VantInstallNextSUComponentNotification, VantSUInstallCompleteNotification
         ])
        [centre addObserver:self selector:@selector(packageEnded:) name:name object:nil];
}

- (void)dealloc {
    [[NSNotificationCenter defaultCenter] removeObserver:self];
    [sight release];
    [rows release];
    [entries release];
    [super dealloc];
}

- (void)change:(std::function<void(vant::TableRows &)>)change {
    vant::onMainQueue([owner = vant::Retained<VantComponentTable>::retain(self), change = std::move(change)] {
        [owner.get() apply:change];
    });
}

- (void)apply:(const std::function<void(vant::TableRows &)> &)change {
    // A download may fail before the table has been asked for its rows.
    if (keys.empty())
        [self takeKeys];
    change(states);
    [self showChanges];
}

- (void)fileCreated:(NSNotification *)notification {
    NSString *path = VantStringForKey([notification userInfo], VantDownloadPathKey);
    [self change:[key = std::string(vant::extractFolderName(vant::utf8(path)))](vant::TableRows &known) {
        known.fileCreated(key);
    }];
}

- (void)archiveExpanded:(NSNotification *)notification {
    NSString *folder = VantStringForKey([notification userInfo], VantExpandedPathKey);
    const bool whole = VantFolderHoldsAnything(folder);
    const auto key = std::string(vant::lastPathComponent(vant::utf8(folder)));
    // By the time of the change the pane has searched the folder.
    [self change:[self, key, whole](vant::TableRows &known) {
        known.archiveExpanded(key, whole);
        if ([self isAnyPackageOfRow:key])
            known.packagesFound(key);
    }];
}

- (BOOL)isAnyPackageOfRow:(const std::string &)key {
    const std::lock_guard lock(paneLock);
    return pane != nil && [pane isAnyPackageOfRow:key];
}

// On the installer thread that posts, where the list stands still; the rows change on the main one.
- (void)packageEnded:(NSNotification *)notification {
    const BOOL goesOn = [notification object] != nil;
    vant::PackageEnd end;
    {
        const std::lock_guard lock(paneLock);
        if (pane == nil)
            return;
        end = [pane endedPackageWithNext:goesOn];
    }
    [self change:[end = std::move(end), goesOn](vant::TableRows &known) {
        known.packageEnded(end);
        if (!goesOn)
            known.runEnded();
    }];
}

- (NSInteger)numberOfRowsInTableView:(NSTableView *)tableView {
    (void)tableView;
    [self takeRows];
    return static_cast<NSInteger>([rows count]);
}

- (void)takeRows {
    const std::lock_guard lock(paneLock);
    if (pane == nil)
        return;
    const BOOL changed = rows != [pane tableRows] || rowCount != [[pane tableRows] count];
    vant::hold(rows, [pane tableRows]);
    vant::hold(entries, [pane tableEntries]);
    rowCount = [rows count];
    if (changed)
        [self rowsChanged];
}

- (BDObject *)rowAtIndex:(NSInteger)index {
    return index >= 0 && static_cast<NSUInteger>(index) < [rows count] ? [rows objectAtIndex:(NSUInteger)index] : nil;
}

- (NSString *)nameOfRow:(NSInteger)index {
    [self takeRows];
    if (index < 0 || static_cast<NSUInteger>(index) >= [entries count])
        return @"";
    NSString *name = VantEntryText([entries objectAtIndex:static_cast<NSUInteger>(index)], VantTypeKey);
    return name == nil ? @"" : VantResourceString(name);
}

- (id)tableView:(NSTableView *)tableView objectValueForTableColumn:(NSTableColumn *)column row:(NSInteger)index {
    (void)tableView;
    NSString *identifier = [column identifier];
    if ([identifier isEqualToString:@"check"])
        return @([[self rowAtIndex:index] getCheckBTStatus]);
    if ([identifier isEqualToString:@"spinner"])
        return VantStateMark(states.state(static_cast<std::size_t>(index)));
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
    (void)tableView;
    if (![cell respondsToSelector:@selector(setProgress:)])
        return;
    // A copy of the column's cell gives up an indicator that it does not own when it takes another: the reference taken
    // here is the one that it gives up.
    if (cell != [column dataCell])
        [(id)[cell progress] retain];
    // NOLINTNEXTLINE(clang-analyzer-osx.cocoa.RetainCount)
    [cell performSelector:@selector(setProgress:) withObject:[self indicatorOfColumn:column row:index]];
    [cell setTextColor:VantStateColour(states.state(static_cast<std::size_t>(index)))];
    VantLabel(cell, VantStateWords(states.state(static_cast<std::size_t>(index))));
}

- (NSString *)tableView:(NSTableView *)tableView
         toolTipForCell:(NSCell *)cell
                   rect:(NSRectPointer)rect
            tableColumn:(NSTableColumn *)column
                    row:(NSInteger)index
          mouseLocation:(NSPoint)mouse {
    (void)tableView, (void)cell, (void)rect, (void)column, (void)mouse;
    return [NSString stringWithFormat:@"%@: %@", [self nameOfRow:index],
                                      VantStateWords(states.state(static_cast<std::size_t>(index)))];
}

// Deferred, and once for all changes of a turn of the run loop: views are not moved in the middle of a reload.
- (void)rowsChanged {
    if (settling)
        return;
    settling = YES;
    vant::onMainQueue([owner = vant::Retained<VantComponentTable>::retain(self)] { [owner.get() settleRows]; });
}

- (void)settleRows {
    settling = NO;
    [self takeKeys];
    // Rows are born with their spinners turning.
    for (std::size_t row = 0; row < [rows count]; ++row)
        [self showRow:row];
    [sight rowsChanged];
    [self showChanges];
}

- (void)takeKeys {
    const std::lock_guard lock(paneLock);
    if (pane == nil)
        return;
    if (auto now = [pane tableKeys]; now != keys) {
        keys = std::move(now);
        states = vant::TableRows(keys, [pane tableKinds]);
    }
}

- (void)giveUpWithRun {
    const std::lock_guard lock(paneLock);
    if (pane != nil && [pane isRunGivenUp])
        states.runEnded();
}

- (void)showChanges {
    [self giveUpWithRun];
    for (const std::size_t row : states.takeChanges())
        [self showRow:row];
    [sight follow:states.active()];
}

- (void)showRow:(std::size_t)index {
    BDObject *row = [self rowAtIndex:static_cast<NSInteger>(index)];
    VantShowState(row, states.state(index), [[row continuousProgress] superview] == table);
    [table setNeedsDisplayInRect:[table rectOfRow:static_cast<NSInteger>(index)]];
}

- (NSArray *)indicatorsOfRow:(NSInteger)index {
    BDObject *row = [self rowAtIndex:index];
    return row == nil ? nil : @[ [row continuousProgress], [row discreteProgress] ];
}

- (void)sightChanged {
    if (const auto active = states.active())
        [self showRow:*active];
}

@end
