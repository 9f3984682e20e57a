#import "slides/VantInstallation+SlideRotation.h"

#import "base/Accessibility.h"
#import "base/Retained.h"
#import "shell/VantInstallation+HostLink.h"
#import "slides/PagePosition.h"
#include "slides/SlideRotation.hpp"
#import "slides/VantInstallation+SlideContent.h"

@implementation VantInstallation (SlideRotation)

- (void)changeImageTrigger {
    autoTrigger = YES;
    // On this very thread: started by hand, the operation never reaches a queue.
    NSInvocationOperation *turn = [[NSInvocationOperation alloc] initWithTarget:self
                                                                       selector:@selector(changeImage:)
                                                                         object:nil];
    [turn start];
    [turn release];
}

- (IBAction)changeImage:(id)sender {
    const auto tag = sender == nil ? std::nullopt : std::optional<int>(static_cast<int>([sender tag]));
    const vant::SlideChange change =
        vant::slideChange(tag, static_cast<int>([radioButton selectedColumn]), static_cast<int>(prevSelection));
    if (change.stopsTimer)
        [self stopSlides];
    if (change.selects)
        [self selectPage:change.page];
    if (!change.turns)
        return;
    [[radioButton cellAtRow:0 column:change.page] setImage:[self resourceImageNamed:@"indicator_selected.png"]];
    [[radioButton cellAtRow:0 column:prevSelection] setImage:[self resourceImageNamed:@"Indicator_normal.png"]];
    [self showPage:change.page];
    VantDescribe(radioButton, VantPagePosition(change.page, radioButton));
    [self moveFocusFrom:nextButton to:backButton];
    [self moveFocusFrom:backButton to:nextButton];
    prevSelection = change.page;
}

// For good: nothing starts the timer again once the user has taken over.
- (void)stopSlides {
    if (![timer isValid])
        return;
    [timer invalidate];
    vant::hold(timer, static_cast<NSTimer *>(nil));
    autoTrigger = NO;
}

- (void)selectPage:(NSInteger)page {
    if (page < 0 || page >= [radioButton numberOfColumns])
        [radioButton deselectAllCells];
    else
        [radioButton selectCellAtRow:0 column:page];
}

- (void)showPage:(NSInteger)page {
    // The first page's content is looked up on every change, so that files which arrive late are found. Its image is
    // only loaded to be shown.
    NSString *firstImagePath = [self firstSlideImagePath];
    NSString *firstTitle = [self firstSlideTitle];
    NSString *firstDescription = [self firstSlideDescription];
    if (page == 1) {
        [imageView setImage:[self resourceImageNamed:@"Mobile.jpg"]];
        [self setButton:nextButton enabled:NO image:@"Next_Disable.png"];
        [self setButton:backButton enabled:YES image:@"Back_Normal.png"];
        [self showTitle:[self hostStringForKey:@"MOBILE_PRINT.TITLE"]
            description:[self vendorStringForKey:@"MOBILE_PRINT.DESC"]];
    } else if (page == 0) {
        [imageView setImage:[self firstSlideImageAtPath:firstImagePath]];
        [self setButton:backButton enabled:NO image:@"Back_Disable.png"];
        [self setButton:nextButton enabled:YES image:@"Next_Normal.png"];
        [self showTitle:firstTitle description:firstDescription];
    }
}

// A button that has just been disabled would keep the keys and answer none.
- (void)moveFocusFrom:(NSButton *)button to:(NSButton *)other {
    NSWindow *window = [button window];
    if (![button isEnabled] && [other isEnabled] && [window firstResponder] == button)
        [window makeFirstResponder:other];
}

- (void)setButton:(NSButton *)button enabled:(BOOL)enabled image:(NSString *)fileName {
    [button setEnabled:enabled];
    [button setImage:[self resourceImageNamed:fileName]];
}

- (void)showTitle:(NSString *)title description:(NSString *)description {
    [productTitle setStringValue:title == nil ? @"" : title];
    [productDesc setStringValue:description == nil ? @"" : description];
}

@end
