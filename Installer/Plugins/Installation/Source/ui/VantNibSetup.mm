#import "ui/VantNibSetup.h"

#import "base/Resources.h"

// Both platforms speak a control's tool tip; what has a label of its own takes that in addition.
static void describe(id control, NSString *description) {
    if ([control respondsToSelector:@selector(setToolTip:)])
        [control setToolTip:description];
    if ([control respondsToSelector:@selector(setAccessibilityLabel:)])
        [control performSelector:@selector(setAccessibilityLabel:) withObject:description];
}

@implementation VantNibSetup

- (void)awakeFromNib {
    [self settleControls];
    [self showImages];
    [self showLink];
    describe(backButton, VantResourceString(@"PreviousPage"));
    describe(nextButton, VantResourceString(@"NextPage"));
    describe(pageIndicator, VantResourceString(@"PageIndicator"));
    describe(table, VantResourceString(@"ComponentTable"));
}

// Not every platform reads these from an interface description.
- (void)settleControls {
    [title setFont:[NSFont boldSystemFontOfSize:[[title font] pointSize]]];
    [pageIndicator setMode:NSRadioModeMatrix];
    [pageIndicator setAllowsEmptySelection:YES];
    [table setHeaderView:nil];
    [table setCornerView:nil];
    [[table enclosingScrollView] tile];
    [table sizeLastColumnToFit];
    for (NSView *view in [[slide superview] subviews])
        if ([view isKindOfClass:[NSProgressIndicator class]])
            [(NSProgressIndicator *)view setDisplayedWhenStopped:YES];
}

- (void)showImages {
    [nextButton setImage:VantResourceImage(@"Next_Normal.png")];
    [backButton setImage:VantResourceImage(@"Back_Disable.png")];
    [[pageIndicator cellAtRow:0 column:0] setImage:VantResourceImage(@"indicator_selected.png")];
    [[pageIndicator cellAtRow:0 column:1] setImage:VantResourceImage(@"Indicator_normal.png")];
    for (NSButtonCell *cell in [pageIndicator cells]) {
        [cell setBordered:NO];
        // A selectable cell takes a click for the start of editing.
        [cell setSelectable:NO];
    }
    [pageIndicator selectCellAtRow:0 column:0];
}

- (void)showLink {
    NSDictionary *attributes = @{
        NSFontAttributeName : [link font],
        NSForegroundColorAttributeName : [NSColor blueColor],
        NSUnderlineStyleAttributeName : @(NSUnderlineStyleSingle)
    };
    NSAttributedString *label = [[NSAttributedString alloc] initWithString:VantResourceString(@"SupportLink")
                                                                attributes:attributes];
    [link setAttributedTitle:label];
    [label release];
}

- (IBAction)openSupportPage:(id)sender {
    (void)sender;
    [[NSWorkspace sharedWorkspace] openURL:[NSURL URLWithString:VantResourceString(@"SupportAddress")]];
}

@end
