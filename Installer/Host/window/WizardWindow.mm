#import "WizardWindow.h"

#import "HostText.h"
#import "KeyLoop.h"

static const NSSize pageSize = {700, 470};
static const CGFloat margin = 20;
static const CGFloat headerHeight = 56;
static const CGFloat footerHeight = 60;
static const NSSize buttonSize = {112, 28};
static const NSSize smallest = {640, 480}; // of the window's content, when no notice takes a part of it

@implementation WizardWindow

- (id)initWithTarget:(id<WizardWindowTarget>)windowTarget {
    self = [super init];
    if (self == nil)
        return nil;
    target = windowTarget;
    [self makeWindow];
    NSView *content = [window contentView];
    [self addHeaderTo:content];
    [self addPaneAreaTo:content];
    [self addButtonsTo:content];
    [self joinKeyLoop];
    [window center];
    [window makeKeyAndOrderFront:self];
    return self;
}

- (void)dealloc {
    [window setDelegate:nil];
    [notice release];
    [pageControls release];
    [window release];
    [super dealloc];
}

- (void)makeWindow {
    const NSRect frame = NSMakeRect(0, 0, pageSize.width, headerHeight + pageSize.height + footerHeight);
    window = [[NSWindow alloc] initWithContentRect:frame
                                         styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                                                   NSWindowStyleMaskMiniaturizable | NSWindowStyleMaskResizable
                                           backing:NSBackingStoreBuffered
                                             defer:NO];
    [window setReleasedWhenClosed:NO];
    [window setTitle:VantHostText(@"WindowTitle")];
    [window setContentMinSize:smallest];
    [window setDelegate:(id)self];
}

- (void)addRuleTo:(NSView *)content at:(CGFloat)y mask:(NSUInteger)mask {
    NSBox *rule = [[NSBox alloc] initWithFrame:NSMakeRect(0, y, [content bounds].size.width, 1)];
    [rule setBoxType:NSBoxSeparator];
    [rule setTitlePosition:NSNoTitle];
    [rule setAutoresizingMask:NSViewWidthSizable | mask];
    [content addSubview:rule];
    [rule release];
}

- (void)addHeaderTo:(NSView *)content {
    const NSSize size = [content bounds].size;
    const NSRect frame = NSMakeRect(margin, size.height - headerHeight + 14, size.width - 2 * margin, 28);
    titleField = [[[NSTextField alloc] initWithFrame:frame] autorelease];
    [titleField setFont:[NSFont boldSystemFontOfSize:18]];
    [titleField setEditable:NO];
    [titleField setSelectable:NO];
    [titleField setBezeled:NO];
    [titleField setDrawsBackground:NO];
    [titleField setAutoresizingMask:NSViewWidthSizable | NSViewMinYMargin];
    [content addSubview:titleField];
    [self addRuleTo:content at:size.height - headerHeight mask:NSViewMinYMargin];
}

- (void)addPaneAreaTo:(NSView *)content {
    const NSSize size = [content bounds].size;
    const NSRect frame = NSMakeRect(0, footerHeight, size.width, size.height - headerHeight - footerHeight);
    paneArea = [[[NSView alloc] initWithFrame:frame] autorelease];
    [paneArea setAutoresizingMask:NSViewWidthSizable | NSViewHeightSizable];
    [content addSubview:paneArea];
}

/// Cancel on the left, Go Back and Continue on the right, as wizards have them.
- (void)addButtonsTo:(NSView *)content {
    const CGFloat width = [content bounds].size.width;
    const CGFloat lefts[] = {width - margin - 2 * buttonSize.width - 10, width - margin - buttonSize.width, margin};
    NSString *const titles[] = {@"GoBackButton", @"ContinueButton", @"CancelButton"};
    for (NSInteger i = 0; i < 3; ++i) {
        const NSRect frame =
            NSMakeRect(lefts[i], (footerHeight - buttonSize.height) / 2, buttonSize.width, buttonSize.height);
        NSButton *button = [[[NSButton alloc] initWithFrame:frame] autorelease];
        [button setTitle:VantHostText(titles[i])];
        [button setBezelStyle:NSBezelStyleRounded];
        [button setTag:i + 1];
        [button setTarget:self];
        [button setAction:@selector(buttonPressed:)];
        [button setAutoresizingMask:(i == 2 ? NSViewMaxXMargin : NSViewMinXMargin) | NSViewMaxYMargin];
        [content addSubview:button];
        buttons[i] = button;
    }
    [buttons[1] setKeyEquivalent:@"\r"];
    [buttons[2] setKeyEquivalent:@"\e"];
    [self addRuleTo:content at:footerHeight - 1 mask:NSViewMaxYMargin];
}

/// The page's controls, then what a notice offers, then the wizard's buttons from left to right.
- (void)joinKeyLoop {
    NSMutableArray *loop = [NSMutableArray arrayWithArray:pageControls];
    if ([notice superview] != nil)
        [loop addObject:[notice button]];
    [loop addObjectsFromArray:@[ buttons[2], buttons[0], buttons[1] ]];
    VantCloseKeyLoop(loop);
}

/// The page's first control that can take the keyboard has it, and it has the keyboard again whenever the window opens.
- (void)focusFirstControl {
    NSView *first = [pageControls count] > 0 ? [pageControls objectAtIndex:0] : nil;
    if (first != nil && ![first acceptsFirstResponder])
        first = [first nextValidKeyView];
    [window setInitialFirstResponder:first];
    [window makeFirstResponder:first];
}

- (void)buttonPressed:(id)sender {
    [target wizardButtonPressed:[sender tag]];
}

- (BOOL)windowShouldClose:(id)sender {
    (void)sender;
    return [target wizardWindowShouldClose];
}

- (void)showPage:(NSView *)view title:(NSString *)title {
    [titleField setStringValue:title != nil ? title : @""];
    if (view == nil)
        return;
    [view setFrame:[paneArea bounds]];
    [view setAutoresizingMask:NSViewWidthSizable | NSViewHeightSizable];
    [paneArea addSubview:view];
    [pageControls release];
    pageControls = [VantKeyChain(view) retain];
    [self joinKeyLoop];
    [self focusFirstControl];
}

- (void)showPackage:(NSUInteger)number of:(NSUInteger)count {
    NSString *title = VantHostText(@"WindowTitle");
    if (number > 0)
        title = [title stringByAppendingFormat:@" – %@", VantCountText(number, count)];
    if (![[window title] isEqualToString:title])
        [window setTitle:title];
}

- (void)showNotice:(NSString *)text {
    if (text == nil) {
        [notice removeFromSuperview];
        return [self resizePaneArea:0];
    }
    if (notice == nil)
        notice = [[NoticeStrip alloc] initWithButton:VantNoticeText(@"Close")
                                              target:window
                                              action:@selector(performClose:)];
    [notice setText:text];
    [[window contentView] addSubview:notice];
    [self layOutNotice];
}

- (void)layOutNotice {
    const CGFloat height = [notice layOutInWidth:[[window contentView] bounds].size.width];
    [notice setFrameOrigin:NSMakePoint(0, footerHeight)];
    [self resizePaneArea:height];
}

// In a narrower window a notice may need another line.
- (void)windowDidResize:(NSNotification *)notification {
    (void)notification;
    if ([notice superview] != nil)
        [self layOutNotice];
}

/// Leaves room for a notice of this height below the page, which never gets lower than in the smallest window.
- (void)resizePaneArea:(CGFloat)noticeHeight {
    const NSSize least = NSMakeSize(smallest.width, smallest.height + noticeHeight);
    [window setContentMinSize:least];
    const NSSize now = [[window contentView] bounds].size;
    if (now.height < least.height)
        [window setContentSize:NSMakeSize(now.width, least.height)];
    const NSSize size = [[window contentView] bounds].size;
    const CGFloat bottom = footerHeight + noticeHeight;
    [paneArea setFrame:NSMakeRect(0, bottom, size.width, size.height - headerHeight - bottom)];
    [self joinKeyLoop];
    [[window contentView] setNeedsDisplay:YES];
}

- (void)setButton:(NSInteger)number enabled:(BOOL)enabled {
    [buttons[number - 1] setEnabled:enabled];
}

- (void)setButton:(NSInteger)number hidden:(BOOL)hidden {
    [buttons[number - 1] setHidden:hidden];
}

@end
