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

/// Indicators that have been destroyed.
static int gone = 0;

@implementation CountingIndicator
- (void)sizeToFit {
    ++sized;
}
- (void)dealloc {
    ++gone;
    [super dealloc];
}
@end

namespace {

/// Where the inherited drawing was asked to draw, and where the indicator lay by then.
std::vector<std::pair<NSRect, NSRect>> drawings;
NSView *watched;

void noteDrawing(id, SEL, NSRect frame, NSView *) {
    drawings.emplace_back(frame, [watched frame]);
}

} // namespace

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

TEST_F(ProgressCell, TheTextIsDrawnInTheWholeCellBeforeTheIndicatorIsLaidOverIt) {
    // The mark of an ended row is the cell's text.
    class_replaceMethod([NSTextFieldCell class], @selector(drawInteriorWithFrame:inView:),
                        reinterpret_cast<IMP>(noteDrawing), "v@:{CGRect={CGPoint=dd}{CGSize=dd}}@");
    watched = indicator;
    for (NSString *name in @[ @"BDContinuousProgressCell", @"BDDiscreteProgressCell" ]) {
        [indicator setFrame:NSMakeRect(0, 0, 1, 1)];
        drawings.clear();
        id cell = makeCell(name);
        [cell performSelector:@selector(setProgress:) withObject:indicator];
        draw(cell, cellFrame);
        ASSERT_EQ(drawings.size(), 1U) << text(name);
        EXPECT_TRUE(NSEqualRects(drawings[0].first, cellFrame)) << text(name);
        EXPECT_TRUE(NSEqualRects(drawings[0].second, NSMakeRect(0, 0, 1, 1))) << text(name);
    }
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
    for (NSString *name in @[ @"BDContinuousProgressCell", @"BDDiscreteProgressCell" ]) {
        auto *only = [[CountingIndicator alloc] initWithFrame:NSMakeRect(0, 0, 1, 1)];
        id cell = makeCell(name);
        [cell performSelector:@selector(setProgress:) withObject:only];
        [only release];
        gone = 0;
        [cell performSelector:@selector(setProgress:) withObject:only];
        ASSERT_EQ(gone, 0) << text(name);
        EXPECT_EQ([only retainCount], 1U) << text(name);
    }
}

TEST_F(ProgressCell, ACellThatGoesLeavesItsIndicatorAlone) {
    // Tables copy cells, and a copy shares the indicator without owning it.
    for (NSString *name in @[ @"BDContinuousProgressCell", @"BDDiscreteProgressCell" ]) {
        id cell = makeCell(name);
        [cell performSelector:@selector(setProgress:) withObject:indicator];
        const NSUInteger held = [indicator retainCount];
        [cell release];
        EXPECT_EQ([indicator retainCount], held) << text(name);
    }
}

TEST_F(ProgressCell, ACopySharesTheIndicator) {
    id cell = makeCell(@"BDContinuousProgressCell");
    [cell performSelector:@selector(setProgress:) withObject:indicator];
    EXPECT_EQ((id)[[cell copy] progress], indicator);
}
