#import "StopQuestion.h"

#import "HostText.h"
#import "Sentence.h"
#import "WindowSystem.h"

#include <algorithm>

static const CGFloat width = 460;
static const CGFloat margin = 20;
static const CGFloat gap = 10;
static const CGFloat buttonHeight = 28;
static const NSTimeInterval keyRequestPeriod = 0.2;
static const int mostKeyRequests = 50;
static const NSInteger keepAnswer = 0;
static const NSInteger stopAnswer = 1;

static NSTextField *fitted(NSString *text, NSFont *font) {
    NSTextField *field = VantSentence(font);
    VantFitSentence(field, text, width - 2 * margin);
    return field;
}

/// The panel that asks, answered by its buttons: Return keeps the installation going, and so does Escape.
@interface StopPanel : NSPanel {
    NSButton *keepButton;
    int keyRequests;
}
- (id)initWithQuestion:(NSString *)question consequence:(NSString *)consequence;
/// Shows the panel until it is answered; the answer.
- (NSInteger)ask;
@end

@implementation StopPanel

- (id)initWithQuestion:(NSString *)question consequence:(NSString *)consequence {
    NSTextField *asked = fitted(question, [NSFont boldSystemFontOfSize:14]);
    NSTextField *told = fitted(consequence, [NSFont systemFontOfSize:13]);
    const CGFloat textBottom = margin + buttonHeight + margin;
    const CGFloat height = textBottom + NSHeight([told frame]) + gap + NSHeight([asked frame]) + margin;
    self = [super initWithContentRect:NSMakeRect(0, 0, width, height)
                            styleMask:NSWindowStyleMaskTitled
                              backing:NSBackingStoreBuffered
                                defer:NO];
    if (self == nil)
        return nil;
    [self setReleasedWhenClosed:NO];
    [self setTitle:VantHostText(@"WindowTitle")];
    [told setFrameOrigin:NSMakePoint(margin, textBottom)];
    [asked setFrameOrigin:NSMakePoint(margin, NSMaxY([told frame]) + gap)];
    [[self contentView] addSubview:told];
    [[self contentView] addSubview:asked];
    [self addButtons];
    [self center];
    return self;
}

/// The safe answer stands on the right, where a wizard goes on.
- (void)addButtons {
    keepButton = [self buttonFor:@"KeepInstalling" answer:keepAnswer right:width - margin];
    NSButton *stopButton = [self buttonFor:@"Stop" answer:stopAnswer right:NSMinX([keepButton frame]) - gap];
    [keepButton setKeyEquivalent:@"\r"];
    [keepButton setNextKeyView:stopButton];
    [stopButton setNextKeyView:keepButton];
    [self setInitialFirstResponder:keepButton];
}

- (NSButton *)buttonFor:(NSString *)key answer:(NSInteger)answer right:(CGFloat)right {
    NSButton *button = [[[NSButton alloc] initWithFrame:NSZeroRect] autorelease];
    [button setTitle:VantNoticeText(key)];
    [button setBezelStyle:NSBezelStyleRounded];
    [button setTag:answer];
    [button setTarget:self];
    [button setAction:@selector(answered:)];
    const CGFloat buttonWidth = std::max(112.0, [[button cell] cellSize].width + 2 * gap);
    [button setFrame:NSMakeRect(right - buttonWidth, margin, buttonWidth, buttonHeight)];
    [[self contentView] addSubview:button];
    return button;
}

- (NSInteger)ask {
    keyRequests = mostKeyRequests;
    [self requestKeysSoon];
    const NSInteger answer = [NSApp runModalForWindow:self];
    [NSObject cancelPreviousPerformRequestsWithTarget:self];
    [self orderOut:nil];
    return answer;
}

- (void)requestKeysSoon {
    [self performSelector:@selector(requestKeys)
               withObject:nil
               afterDelay:keyRequestPeriod
                  inModes:@[ NSModalPanelRunLoopMode ]];
}

- (void)requestKeys {
    VantRequestKeyboard(self);
    if (--keyRequests > 0)
        [self requestKeysSoon];
}

- (void)answered:(id)sender {
    [NSApp stopModalWithCode:[sender tag]];
}

- (void)keyDown:(NSEvent *)event {
    if ([[event characters] isEqualToString:@"\e"])
        [NSApp stopModalWithCode:keepAnswer];
    else
        [super keyDown:event];
}

@end

static BOOL asking = NO;

BOOL VantAskWhetherToStop(void) {
    if (asking)
        return NO;
    StopPanel *panel = [[StopPanel alloc] initWithQuestion:VantNoticeText(@"StopQuestion")
                                               consequence:VantNoticeText(@"StopConsequence")];
    asking = YES;
    const NSInteger answer = [panel ask];
    asking = NO;
    [panel release];
    return answer == stopAnswer;
}

void VantWithdrawQuestion(void) {
    if (asking)
        [NSApp abortModal];
}
