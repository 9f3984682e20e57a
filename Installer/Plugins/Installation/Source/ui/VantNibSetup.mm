#import "ui/VantNibSetup.h"

#import "base/Resources.h"

#include <cmath>

/// Where the words beside the picture begin.
static const CGFloat rightColumn = 308;

static void label(id element, NSString *words) {
    if ([element respondsToSelector:@selector(setAccessibilityLabel:)])
        [element performSelector:@selector(setAccessibilityLabel:) withObject:words];
}

// Both platforms speak a control's tool tip; what has a label of its own takes that in addition.
static void describe(NSView *control, NSString *words) {
    [control setToolTip:words];
    label(control, words);
}

static NSString *positionOf(NSInteger page, NSMatrix *indicator) {
    return [NSString stringWithFormat:VantResourceString(@"PageIndicator"), static_cast<int>(page + 1),
                                      static_cast<int>([indicator numberOfColumns])];
}

void VantDescribePage(NSMatrix *indicator, NSInteger page) {
    describe(indicator, positionOf(page, indicator));
}

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
    describe(backButton, VantResourceString(@"PreviousPage"));
    describe(nextButton, VantResourceString(@"NextPage"));
    describe(table, VantResourceString(@"ComponentTable"));
    describe(slide, VantResourceString(@"Picture"));
    describe(waitingBar, VantResourceString(@"InstallationBar"));
    describe(downloadBar, VantResourceString(@"DownloadBar"));
    describe(installationBar, VantResourceString(@"InstallationBar"));
    // What the line says is its own; a tip over it would hide it.
    label(status, VantResourceString(@"StatusLine"));
    for (NSInteger page = 0; page < [pageIndicator numberOfColumns]; ++page)
        label([pageIndicator cellAtRow:0 column:page], positionOf(page, pageIndicator));
    VantDescribePage(pageIndicator, 0);
}

- (void)alignTexts {
    beginTextAt(NSMinX([[table enclosingScrollView] frame]), status);
    for (NSControl *each in @[ title, text, link ])
        beginTextAt(rightColumn, each);
}

// Not every platform reads these from an interface description.
- (void)settleControls {
    [title setFont:[NSFont boldSystemFontOfSize:[[title font] pointSize]]];
    [pageIndicator setMode:NSRadioModeMatrix];
    [pageIndicator setAllowsEmptySelection:YES];
    [table setHeaderView:nil];
    [table setCornerView:nil];
    [[table enclosingScrollView] tile];
    // The host picks the components; here they are told, not chosen.
    [[[table tableColumnWithIdentifier:@"check"] dataCell] setEnabled:NO];
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

- (void)showLink {
    NSDictionary *attributes = @{
        NSFontAttributeName : [link font],
        NSForegroundColorAttributeName : [NSColor blueColor],
        NSUnderlineStyleAttributeName : @(NSUnderlineStyleSingle)
    };
    NSAttributedString *words = [[NSAttributedString alloc] initWithString:VantResourceString(@"SupportLink")
                                                                attributes:attributes];
    [link setAttributedTitle:words];
    // It reacts where its words are, and nowhere beside them.
    [link setFrameSize:NSMakeSize(std::ceil([[link cell] cellSize].width), NSHeight([link frame]))];
    [words release];
}

- (IBAction)openSupportPage:(id)sender {
    (void)sender;
    [[NSWorkspace sharedWorkspace] openURL:[NSURL URLWithString:VantResourceString(@"SupportAddress")]];
}

@end
