#import "PaneTest.h"
#import "selection/ComponentRecord.h"
#import "shell/Notifications.h"

#include "ProcessorTime.hpp"

using namespace vant::test;

class ComponentTable : public PaneTest {
protected:
    ComponentTable() {
        createIdlePane();
        table = field<NSTableView *>(pane, "list1");
        window = [[NSWindow alloc] initWithContentRect:NSMakeRect(50, 50, 620, 420)
                                             styleMask:NSTitledWindowMask
                                               backing:NSBackingStoreBuffered
                                                 defer:NO];
        [window setContentView:[pane contentView]];
        [window orderFront:nil];
    }

    void setRows(NSUInteger count, const char *rows = "objects1", const char *entries = "selectedarrXML1") {
        NSMutableArray *made = [NSMutableArray array];
        NSMutableArray *described = [NSMutableArray array];
        for (NSUInteger i = 0; i < count; ++i) {
            [made addObject:[[[bundleClass(@"BDObject") alloc] init] autorelease]];
            NSString *location = [NSString stringWithFormat:@"/media/%lu.zip", (unsigned long)i];
            [described
                addObject:entry(i == 0 ? @"Print Driver" : [NSString stringWithFormat:@"Kind %lu", (unsigned long)i],
                                location)];
        }
        field<id>(pane, rows) = [made retain];
        field<id>(pane, entries) = [described retain];
        [table reloadData];
    }

    BDObject *row(NSUInteger index) { return [field<NSArray *>(pane, "objects1") objectAtIndex:index]; }

    NSUInteger indicators() {
        NSUInteger count = 0;
        for (NSView *view in [table subviews])
            count += [view isKindOfClass:[NSProgressIndicator class]] ? 1 : 0;
        return count;
    }

    /// Rows of which a part is in sight.
    NSRange sight() { return [table rowsInRect:[table visibleRect]]; }

    bool settles() {
        return waitUntil([this] { return indicators() == 2 * sight().length; }, 5);
    }

    id value(NSString *column, NSInteger index) {
        return [[table dataSource] tableView:table
                   objectValueForTableColumn:[table tableColumnWithIdentifier:column]
                                         row:index];
    }

    NSTableView *table;
    NSWindow *window;
};

TEST_F(ComponentTable, HasTheFourColumnsWithTheirCells) {
    EXPECT_EQ([[table tableColumns] count], 4U);
    EXPECT_TRUE([[[table tableColumnWithIdentifier:@"check"] dataCell] isKindOfClass:[NSButtonCell class]]);
    EXPECT_TRUE([[[table tableColumnWithIdentifier:@"spinner"] dataCell]
        isKindOfClass:bundleClass(@"BDContinuousProgressCell")]);
    EXPECT_TRUE(
        [[[table tableColumnWithIdentifier:@"bar"] dataCell] isKindOfClass:bundleClass(@"BDDiscreteProgressCell")]);
    EXPECT_NE([table tableColumnWithIdentifier:@"name"], nil);
}

TEST_F(ComponentTable, ShowsTheRowsOfTheMediaSelection) {
    setRows(3);
    EXPECT_EQ([table numberOfRows], 3);
    EXPECT_EQ(text(value(@"name", 0)), "Print Driver");
    EXPECT_EQ(text(value(@"name", 2)), "Kind 2");
    [row(1) setCheckBTStatus:NO];
    EXPECT_TRUE([value(@"check", 0) boolValue]);
    EXPECT_FALSE([value(@"check", 1) boolValue]);
}

TEST_F(ComponentTable, ShowsTheRowsOfTheWebSelectionWhenTheMediaOneIsEmpty) {
    setRows(0);
    setRows(2, "objects", "selectedarrXML");
    EXPECT_EQ([table numberOfRows], 2);
    EXPECT_EQ(text(value(@"name", 1)), "Kind 1");
}

TEST_F(ComponentTable, AnEntryWithoutANameAndARowWithoutAnEntryShowNothing) {
    setRows(2);
    field<id>(pane, "selectedarrXML1") = [@[ @"no dictionary" ] retain];
    EXPECT_EQ(text(value(@"name", 0)), "");
    EXPECT_EQ(text(value(@"name", 1)), "");
}

TEST_F(ComponentTable, TheIndicatorsOfRowsInSightLieOnTheirCells) {
    setRows(3);
    ASSERT_TRUE(settles());
    [table display];
    for (NSInteger i = 0; i < 3; ++i) {
        const NSRect spinner = [table frameOfCellAtColumn:1 row:i];
        const NSRect bar = NSOffsetRect([table frameOfCellAtColumn:2 row:i], 0, 4);
        EXPECT_TRUE(NSEqualPoints([[row((NSUInteger)i) continuousProgress] frame].origin, spinner.origin)) << i;
        EXPECT_TRUE(NSEqualPoints([[row((NSUInteger)i) discreteProgress] frame].origin, bar.origin)) << i;
    }
}

TEST_F(ComponentTable, RowsThatAreAskedForBeforeTheTableCountsThemHaveTheirIndicators) {
    setRows(0);
    auto *made = field<NSMutableArray *>(pane, "objects1");
    for (int i = 0; i < 3; ++i)
        [made addObject:[[[bundleClass(@"BDObject") alloc] init] autorelease]];
    EXPECT_EQ([[table dataSource] numberOfRowsInTableView:table], 3);
    EXPECT_TRUE(waitUntil([this] { return indicators() == 6; }));
}

TEST_F(ComponentTable, ScrollingTakesOutWhatLeavesSightAndPutsInWhatComes) {
    setRows(1000);
    ASSERT_TRUE(settles());
    EXPECT_EQ([[row(0) discreteProgress] superview], table);
    [table scrollRowToVisible:999];
    EXPECT_EQ([[row(0) discreteProgress] superview], nil);
    EXPECT_EQ([[row(999) discreteProgress] superview], table);
    EXPECT_EQ(indicators(), 2 * sight().length);
    [table display];
    EXPECT_EQ([[row(999) discreteProgress] frame].origin.y, [table frameOfCellAtColumn:2 row:999].origin.y + 4);
}

TEST_F(ComponentTable, ReloadingWithFewerRowsLeavesNoIndicatorBehind) {
    setRows(3);
    ASSERT_TRUE(settles());
    EXPECT_EQ(indicators(), 6U);
    setRows(1);
    EXPECT_TRUE(waitUntil([this] { return indicators() == 2; }, 5));
    setRows(0);
    EXPECT_TRUE(waitUntil([this] { return indicators() == 0; }, 5));
}

TEST_F(ComponentTable, KeepsUpWhenAThousandRowsScrollByTheLine) {
    setRows(1000);
    ASSERT_TRUE(settles());
    const double start = processSeconds();
    for (NSInteger i = 0; i < 1000; i += 5) {
        [table scrollRowToVisible:i];
        [table displayIfNeeded];
    }
    // Two hundred steps: sixty frames a second leave 3.3 s for them.
    EXPECT_LT(processSeconds() - start, 3.3);
    EXPECT_EQ(indicators(), 2 * sight().length);
}
