#import "ui/VantNibSetup.h"

#import "base/Accessibility.h"
#import "base/Bridge.h"
#import "base/Resources.h"
#import "slides/PagePosition.h"
#include "slides/SlideText.hpp"
#import "ui/VantButton.h"

/// Where the words beside the picture begin.
static const CGFloat rightColumn = 308;

/// Moves a text sideways so that its letters, not its frame, begin at a place.
static void beginTextAt(CGFloat x, NSControl *control) {
    const NSRect bounds = [control bounds];
    const CGFloat inset = NSMinX([[control cell] titleRectForBounds:bounds]) - NSMinX(bounds);
    [control setFrameOrigin:NSMakePoint(x - inset, NSMinY([control frame]))];
}

@implementation VantNibSetup

- (void)awakeFromNib {
    [self settleControls];
    [self showImages];
    [self showLink];
    [self alignTexts];
    [self describeControls];
}

- (void)describeControls {
    VantDescribe(backButton, VantResourceString(@"PreviousPage"));
    VantDescribe(nextButton, VantResourceString(@"NextPage"));
    VantDescribe(table, VantResourceString(@"ComponentTable"));
    VantDescribe(slide, VantResourceString(@"Picture"));
    VantDescribe(waitingBar, VantResourceString(@"InstallationBar"));
    VantDescribe(downloadBar, VantResourceString(@"DownloadBar"));
    VantDescribe(installationBar, VantResourceString(@"InstallationBar"));
    // What the line says is its own; a tip over it would hide it.
    VantLabel(status, VantResourceString(@"StatusLine"));
    for (NSInteger page = 0; page < [pageIndicator numberOfColumns]; ++page)
        VantLabel([pageIndicator cellAtRow:0 column:page], VantPagePosition(page, pageIndicator));
    VantDescribe(pageIndicator, VantPagePosition(0, pageIndicator));
}

- (void)alignTexts {
    beginTextAt(NSMinX([[table enclosingScrollView] frame]), status);
    for (NSControl *each in @[ title, slideText, link ])
        beginTextAt(rightColumn, each);
}

// Not every platform reads these from a nib.
- (void)settleControls {
    [title setFont:[NSFont boldSystemFontOfSize:[[title font] pointSize]]];
    [pageIndicator setMode:NSRadioModeMatrix];
    [pageIndicator setAllowsEmptySelection:YES];
    [table setHeaderView:nil];
    [table setCornerView:nil];
    [[table enclosingScrollView] tile];
    // The host picks the components; here they are told, not chosen.
    [[[table tableColumnWithIdentifier:@"check"] dataCell] setEnabled:NO];
    [[[table tableColumnWithIdentifier:@"spinner"] dataCell] setFont:[NSFont boldSystemFontOfSize:13]];
    for (NSCell *cell in @[ [status cell], [[table tableColumnWithIdentifier:@"name"] dataCell] ])
        [cell setLineBreakMode:NSLineBreakByTruncatingTail];
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

// The vendor's name comes with the model record, which the pane takes up later.
- (void)showLink {
    [link setWords:vant::nsString(vant::withVendorName(vant::utf8(VantResourceString(@"SupportLink")), ""))];
}

- (IBAction)openSupportPage:(id)sender {
    (void)sender;
    [[NSWorkspace sharedWorkspace] openURL:[NSURL URLWithString:VantResourceString(@"SupportAddress")]];
}

@end
