#import "PaneTest.h"
#import "ui/BDContinuousProgressCell.h"
#import "ui/BDDiscreteProgressCell.h"

using namespace vant::test;

/// Stands for an indicator: counts what it is asked.
@interface CountingIndicator : NSProgressIndicator {
@public
    int sized;
}
@end

@implementation CountingIndicator
- (void)sizeToFit {
    ++sized;
}
@end

class ProgressCell : public PaneTest {
protected:
    ProgressCell() {
        createPane(nil);
        window = [[NSWindow alloc] initWithContentRect:NSMakeRect(50, 50, 200, 100)
                                             styleMask:NSTitledWindowMask
                                               backing:NSBackingStoreBuffered
                                                 defer:NO];
        [window orderFront:nil];
        indicator = [[CountingIndicator alloc] initWithFrame:NSMakeRect(0, 0, 1, 1)];
    }

    id makeCell(NSString *className) { return [[bundleClass(className) alloc] initTextCell:@""]; }

    void draw(id cell, NSRect frame) {
        NSView *view = [window contentView];
        [view lockFocus];
        [cell drawInteriorWithFrame:frame inView:view];
        [view unlockFocus];
    }

    NSWindow *window;
    CountingIndicator *indicator;
};

static const NSRect cellFrame = {{10, 20}, {60, 18}};

TEST_F(ProgressCell, TheSpinnerIsLaidOverTheWholeCell) {
    id cell = makeCell(@"BDContinuousProgressCell");
    [cell performSelector:@selector(setProgress:) withObject:indicator];
    draw(cell, cellFrame);
    EXPECT_TRUE(NSEqualRects([indicator frame], cellFrame));
}

TEST_F(ProgressCell, TheBarIsLaidFourPointsLower) {
    id cell = makeCell(@"BDDiscreteProgressCell");
    [cell performSelector:@selector(setProgress:) withObject:indicator];
    draw(cell, cellFrame);
    EXPECT_TRUE(NSEqualRects([indicator frame], NSMakeRect(10, 24, 60, 18)));
}

TEST_F(ProgressCell, DrawingAgainElsewhereMovesTheIndicator) {
    id cell = makeCell(@"BDDiscreteProgressCell");
    [cell performSelector:@selector(setProgress:) withObject:indicator];
    draw(cell, cellFrame);
    draw(cell, NSOffsetRect(cellFrame, 0, -40));
    EXPECT_TRUE(NSEqualRects([indicator frame], NSMakeRect(10, -16, 60, 18)));
}

TEST_F(ProgressCell, TheIndicatorIsSizedWhenItIsSetAndAtEachDrawing) {
    for (NSString *name in @[ @"BDContinuousProgressCell", @"BDDiscreteProgressCell" ]) {
        id cell = makeCell(name);
        indicator->sized = 0;
        [cell performSelector:@selector(setProgress:) withObject:indicator];
        EXPECT_EQ(indicator->sized, 1) << text(name);
        draw(cell, cellFrame);
        EXPECT_EQ(indicator->sized, 2) << text(name);
    }
}

TEST_F(ProgressCell, TheCellNeverAddsOrRemovesTheIndicator) {
    for (NSString *name in @[ @"BDContinuousProgressCell", @"BDDiscreteProgressCell" ]) {
        id cell = makeCell(name);
        [cell performSelector:@selector(setProgress:) withObject:indicator];
        draw(cell, cellFrame);
        EXPECT_EQ([indicator superview], nil) << text(name);
    }
}

TEST_F(ProgressCell, ACellWithoutAnIndicatorDrawsItsText) {
    for (NSString *name in @[ @"BDContinuousProgressCell", @"BDDiscreteProgressCell" ]) {
        id cell = makeCell(name);
        [cell performSelector:@selector(setProgress:) withObject:nil];
        [cell setStringValue:@"text"];
        draw(cell, cellFrame);
        EXPECT_EQ([cell progress], nil) << text(name);
    }
}

TEST_F(ProgressCell, TheIndicatorIsSharedAndGivenUpForAnother) {
    for (NSString *name in @[ @"BDContinuousProgressCell", @"BDDiscreteProgressCell" ]) {
        id cell = makeCell(name);
        const NSUInteger before = [indicator retainCount];
        [cell performSelector:@selector(setProgress:) withObject:indicator];
        EXPECT_EQ([indicator retainCount], before + 1) << text(name);
        EXPECT_EQ((id)[cell progress], indicator) << text(name);
        [cell performSelector:@selector(setProgress:) withObject:indicator];
        EXPECT_EQ([indicator retainCount], before + 1) << text(name);
        [cell performSelector:@selector(setProgress:) withObject:nil];
        EXPECT_EQ([indicator retainCount], before) << text(name);
    }
}

TEST_F(ProgressCell, SettingTheOnlyReferenceAgainKeepsItAlive) {
    id cell = makeCell(@"BDDiscreteProgressCell");
    [cell performSelector:@selector(setProgress:) withObject:indicator];
    [indicator release];
    [cell performSelector:@selector(setProgress:) withObject:indicator];
    EXPECT_EQ([indicator retainCount], 1U);
}

TEST_F(ProgressCell, ACopySharesTheIndicator) {
    id cell = makeCell(@"BDContinuousProgressCell");
    [cell performSelector:@selector(setProgress:) withObject:indicator];
    EXPECT_EQ((id)[[cell copy] progress], indicator);
}
