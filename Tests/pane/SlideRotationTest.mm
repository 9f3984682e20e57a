#import "PaneTest.h"
#import "slides/VantInstallation+SlideContent.h"
#import "slides/VantInstallation+SlideRotation.h"

using namespace vant::test;

/// A control of no kind in particular, with a tag.
@interface TaggedSender : NSObject {
    NSInteger tag;
}
- (id)initWithTag:(NSInteger)theTag;
- (NSInteger)tag;
@end

@implementation TaggedSender
- (id)initWithTag:(NSInteger)theTag {
    self = [super init];
    tag = theTag;
    return self;
}
- (NSInteger)tag {
    return tag;
}
@end

static std::vector<std::string> steps;

/// A button that writes down, by its tag, what it is told.
@interface OrderedButton : NSButton
@end

@implementation OrderedButton
- (void)setEnabled:(BOOL)enabled {
    steps.push_back(std::to_string([self tag]) + (enabled ? " YES" : " NO"));
    [super setEnabled:enabled];
}
- (void)setImage:(NSImage *)image {
    steps.push_back(std::to_string([self tag]) + " image");
    [super setImage:image];
}
@end

static int lookUps = 0;

static NSString *countLookUp(id, SEL, id) {
    ++lookUps;
    return nil;
}

class SlideRotation : public PaneTest {
protected:
    SlideRotation() {
        createIdlePane();
        NSMutableDictionary *strings = [observer strings];
        [strings setObject:@"Toner of __MFG__" forKey:@"TONER.TITLE"];
        [strings setObject:@"Toner text" forKey:@"TONER.DESC"];
        [strings setObject:@"Mobile of __MFG__" forKey:@"MOBILE_PRINT.TITLE"];
        [strings setObject:@"Mobile by __MFG__" forKey:@"MOBILE_PRINT.DESC"];
        startTimer();
    }

    void startTimer() {
        field<NSTimer *>(pane, "timer") = [[NSTimer scheduledTimerWithTimeInterval:15.0
                                                                            target:pane
                                                                          selector:@selector(changeImageTrigger)
                                                                          userInfo:nil
                                                                           repeats:YES] retain];
    }

    void send(NSInteger tag) { [pane changeImage:[[[TaggedSender alloc] initWithTag:tag] autorelease]]; }

    NSTimer *timer() { return field<NSTimer *>(pane, "timer"); }
    NSInteger page() { return field<NSInteger>(pane, "prevSelection"); }
    NSInteger column() { return [field<NSMatrix *>(pane, "radioButton") selectedColumn]; }
    NSButton *next() { return field<NSButton *>(pane, "nextButton"); }
    NSButton *back() { return field<NSButton *>(pane, "backButton"); }
    std::string title() { return text([field<NSTextField *>(pane, "productTitle") stringValue]); }
    std::string description() { return text([field<NSTextField *>(pane, "productDesc") stringValue]); }

    /// Whether a cell or button shows the resource, by its bytes.
    bool shows(id control, NSString *resource) {
        return [[[control image] TIFFRepresentation] isEqual:[[pane resourceImageNamed:resource] TIFFRepresentation]];
    }
    id dot(NSInteger index) { return [field<NSMatrix *>(pane, "radioButton") cellAtRow:0 column:index]; }

    void expectFirstPage() {
        EXPECT_EQ(page(), 0);
        EXPECT_EQ(title(), "Toner of Quorvel");
        EXPECT_EQ(description(), "Toner text");
        EXPECT_TRUE(shows(field<NSImageView *>(pane, "imageView"), @"Toner.jpg"));
        EXPECT_TRUE([next() isEnabled] && shows(next(), @"Next_Normal.png"));
        EXPECT_TRUE(![back() isEnabled] && shows(back(), @"Back_Disable.png"));
        EXPECT_TRUE(shows(dot(0), @"indicator_selected.png") && shows(dot(1), @"Indicator_normal.png"));
    }
    void expectSecondPage() {
        EXPECT_EQ(page(), 1);
        // The title keeps its placeholder, the text does not.
        EXPECT_EQ(title(), "Mobile of __MFG__");
        EXPECT_EQ(description(), "Mobile by Quorvel");
        EXPECT_TRUE(shows(field<NSImageView *>(pane, "imageView"), @"Mobile.jpg"));
        EXPECT_TRUE(![next() isEnabled] && shows(next(), @"Next_Disable.png"));
        EXPECT_TRUE([back() isEnabled] && shows(back(), @"Back_Normal.png"));
        EXPECT_TRUE(shows(dot(1), @"indicator_selected.png") && shows(dot(0), @"Indicator_normal.png"));
    }
};

TEST_F(SlideRotation, TicksAlternateThePagesAndKeepTheTimer) {
    for (int round = 0; round < 2; ++round) {
        [pane changeImageTrigger];
        expectSecondPage();
        [pane changeImageTrigger];
        expectFirstPage();
    }
    EXPECT_TRUE([timer() isValid]);
}

TEST_F(SlideRotation, TheFirstPagesContentIsLookedUpOnEveryChange) {
    // Its files may arrive while the second page is up.
    method_setImplementation(class_getInstanceMethod(paneClass(), @selector(getGTATitlestring:)),
                             reinterpret_cast<IMP>(countLookUp));
    send(2);
    EXPECT_EQ(lookUps, 2) << "main and fall-back set";
    send(2);
    EXPECT_EQ(lookUps, 4) << "beyond the last page as well";
}

TEST_F(SlideRotation, AButtonIsEnabledBeforeItsImageChanges) {
    // A button draws itself at either; the new picture in the old state would flash.
    object_setClass(next(), [OrderedButton class]);
    object_setClass(back(), [OrderedButton class]);
    send(2);
    EXPECT_EQ(steps, (std::vector<std::string>{"2 NO", "2 image", "1 YES", "1 image"}));
    steps.clear();
    send(1);
    EXPECT_EQ(steps, (std::vector<std::string>{"1 NO", "1 image", "2 YES", "2 image"}));
}

TEST_F(SlideRotation, ATickMarksTheShowAsAutomaticAndRunsOnTheCallersThread) {
    EXPECT_FALSE(field<BOOL>(pane, "autoTrigger"));
    [pane changeImageTrigger];
    EXPECT_TRUE(field<BOOL>(pane, "autoTrigger"));
    EXPECT_EQ(page(), 1);
}

TEST_F(SlideRotation, NextShowsTheSecondPageAndStopsTheTimerForGood) {
    [pane changeImageTrigger];
    [pane changeImageTrigger];
    NSTimer *running = [[timer() retain] autorelease];
    send(2);
    expectSecondPage();
    EXPECT_EQ(column(), 1);
    EXPECT_EQ(timer(), nil);
    EXPECT_FALSE([running isValid]);
    EXPECT_FALSE(field<BOOL>(pane, "autoTrigger"));
}

TEST_F(SlideRotation, BackReturnsToTheFirstPage) {
    send(2);
    send(1);
    expectFirstPage();
    EXPECT_EQ(column(), 0);
}

TEST_F(SlideRotation, TheIndicatorOfTheOtherPageShowsItAndKeepsTheSelection) {
    NSMatrix *dots = field<NSMatrix *>(pane, "radioButton");
    [dots selectCellAtRow:0 column:1];
    [pane changeImage:dots];
    expectSecondPage();
    EXPECT_EQ(column(), 1);
}

TEST_F(SlideRotation, TheIndicatorOfThePageShownStopsTheTimerAndChangesNothingElse) {
    [field<NSTextField *>(pane, "productTitle") setStringValue:@"as it was"];
    [pane changeImage:field<NSMatrix *>(pane, "radioButton")];
    EXPECT_EQ(timer(), nil);
    EXPECT_EQ(page(), 0);
    EXPECT_EQ(title(), "as it was");
}

TEST_F(SlideRotation, AnyOtherTagSelectsAndShowsTheFirstPage) {
    send(2);
    send(3);
    expectFirstPage();
    EXPECT_EQ(column(), 0);
}

TEST_F(SlideRotation, BackOnTheFirstPageDeselectsAndALaterNextDrawsTheFirstPageAgain) {
    [field<NSTextField *>(pane, "productTitle") setStringValue:@"as it was"];
    send(1);
    EXPECT_EQ(column(), -1);
    EXPECT_EQ(page(), -1);
    EXPECT_EQ(title(), "as it was");
    EXPECT_TRUE(shows(dot(0), @"Indicator_normal.png"));
    send(2);
    EXPECT_EQ(column(), 0);
    EXPECT_EQ(page(), 0);
    EXPECT_EQ(title(), "Toner of Quorvel");
    EXPECT_TRUE(shows(dot(0), @"indicator_selected.png"));
}

TEST_F(SlideRotation, ATickWithoutASelectionGoesToTheFirstPage) {
    field<NSInteger>(pane, "prevSelection") = 1;
    [field<NSMatrix *>(pane, "radioButton") deselectAllCells];
    [pane changeImageTrigger];
    EXPECT_EQ(column(), 0);
    EXPECT_EQ(page(), 0);
}

TEST_F(SlideRotation, AStoppedShowLeavesTheMarkAsItIs) {
    send(2);
    field<BOOL>(pane, "autoTrigger") = YES;
    send(1);
    EXPECT_TRUE(field<BOOL>(pane, "autoTrigger"));
}

TEST_F(SlideRotation, WithoutAHostTheTextsBecomeEmpty) {
    field<id>(pane, "mObserver") = nil;
    [pane changeImageTrigger];
    EXPECT_EQ(title(), "");
    EXPECT_EQ(description(), "");
}
