#import <AppKit/AppKit.h>

#include "GNUstep/authorization/AuthorizationPrompt.hpp"

namespace {

constexpr CGFloat panelWidth = 500;
constexpr CGFloat panelHeight = 172;
constexpr CGFloat textLeft = 100;
constexpr CGFloat textWidth = panelWidth - textLeft - 20;

NSTextField *label(NSString *text, NSRect frame, NSFont *font) {
    NSTextField *field = [[[NSTextField alloc] initWithFrame:frame] autorelease];
    [field setStringValue:text];
    [field setFont:font];
    [field setEditable:NO];
    [field setSelectable:NO];
    [field setBezeled:NO];
    [field setBordered:NO];
    [field setDrawsBackground:NO];
    return field;
}

} // namespace

/// A padlock, drawn to the size of the view.
@interface VantPadlock : NSView
@end

@implementation VantPadlock

- (void)drawRect:(NSRect)dirty {
    (void)dirty;
    const CGFloat width = NSWidth([self bounds]);
    const CGFloat bodyHeight = NSHeight([self bounds]) * 0.55;
    [self drawShackleAt:NSMakePoint(width / 2, bodyHeight + width * 0.06) radius:width * 0.26 down:bodyHeight];
    NSBezierPath *body = [NSBezierPath bezierPathWithRoundedRect:NSMakeRect(0, 0, width, bodyHeight)
                                                         xRadius:6
                                                         yRadius:6];
    [[NSColor colorWithCalibratedRed:0.91 green:0.70 blue:0.24 alpha:1] set];
    [body fill];
    [[NSColor colorWithCalibratedRed:0.45 green:0.32 blue:0.06 alpha:1] set];
    const CGFloat hole = width * 0.2;
    [[NSBezierPath bezierPathWithOvalInRect:NSMakeRect((width - hole) / 2, (bodyHeight - hole) / 2, hole, hole)] fill];
}

- (void)drawShackleAt:(NSPoint)centre radius:(CGFloat)radius down:(CGFloat)bottom {
    NSBezierPath *shackle = [NSBezierPath bezierPath];
    [shackle moveToPoint:NSMakePoint(centre.x + radius, bottom)];
    [shackle appendBezierPathWithArcWithCenter:centre radius:radius startAngle:0 endAngle:180];
    [shackle lineToPoint:NSMakePoint(centre.x - radius, bottom)];
    [shackle setLineWidth:radius * 0.5];
    [[NSColor colorWithCalibratedWhite:0.55 alpha:1] set];
    [shackle stroke];
}

@end

/// The panel that asks for an administrator's leave. Debian's user has no password to give it: who may write where is
/// decided by the account that the host runs under, and the panel asks whether to go on. Main thread.
@interface VantAuthorizationPanel : NSObject <NSWindowDelegate> {
    NSPanel *panel;
    vant::PromptAnswer answer;
}
- (void)ask;
- (vant::PromptAnswer)answer;
@end

@implementation VantAuthorizationPanel

- (id)init {
    if ((self = [super init]))
        answer = vant::PromptAnswer::impossible;
    return self;
}

- (void)dealloc {
    [panel release];
    [super dealloc];
}

- (vant::PromptAnswer)answer {
    return answer;
}

- (void)ask {
    if (NSApp == nil)
        return;
    [self build];
    answer = vant::PromptAnswer::cancelled;
    [panel center];
    [NSApp activateIgnoringOtherApps:YES];
    [panel makeKeyAndOrderFront:nil];
    [NSApp runModalForWindow:panel];
    [panel setDelegate:nil];
    [panel orderOut:nil];
}

- (void)build {
    panel = [[NSPanel alloc] initWithContentRect:NSMakeRect(0, 0, panelWidth, panelHeight)
                                       styleMask:NSTitledWindowMask
                                         backing:NSBackingStoreBuffered
                                           defer:NO];
    [panel setTitle:@"Administrator Rights"];
    [panel setReleasedWhenClosed:NO];
    [panel setDelegate:self];
    [self addIcon];
    [self addTexts];
    [self addButton:@"Cancel" action:@selector(cancel:) key:@"\033" right:panelWidth - 116];
    [self addButton:@"OK" action:@selector(grant:) key:@"\r" right:panelWidth - 20];
}

- (void)addIcon {
    NSRect frame = NSMakeRect(24, panelHeight - 84, 56, 64);
    [[panel contentView] addSubview:[[[VantPadlock alloc] initWithFrame:frame] autorelease]];
}

- (void)addTexts {
    NSString *host = [[NSProcessInfo processInfo] processName];
    NSString *title = [NSString stringWithFormat:@"%@ wants to make changes.", host];
    NSString *detail = @"It is about to install software for all users of this computer.";
    NSString *user = [NSString stringWithFormat:@"User name:  %@", NSFullUserName()];
    NSView *content = [panel contentView];
    [content addSubview:label(title, NSMakeRect(textLeft, panelHeight - 42, textWidth, 20),
                              [NSFont boldSystemFontOfSize:13])];
    [content
        addSubview:label(detail, NSMakeRect(textLeft, panelHeight - 80, textWidth, 34), [NSFont systemFontOfSize:12])];
    [content
        addSubview:label(user, NSMakeRect(textLeft, panelHeight - 108, textWidth, 18), [NSFont systemFontOfSize:12])];
}

- (void)addButton:(NSString *)title action:(SEL)action key:(NSString *)key right:(CGFloat)right {
    NSButton *button = [[[NSButton alloc] initWithFrame:NSMakeRect(right - 88, 16, 88, 26)] autorelease];
    [button setTitle:title];
    [button setBezelStyle:NSRoundedBezelStyle];
    [button setTarget:self];
    [button setAction:action];
    [button setKeyEquivalent:key];
    [[panel contentView] addSubview:button];
    if ([key isEqualToString:@"\r"])
        [panel setDefaultButtonCell:[button cell]];
}

// Window managers offer to close a panel that has no close button of its own.
- (BOOL)windowShouldClose:(id)sender {
    [self cancel:sender];
    return NO;
}

- (void)grant:(id)sender {
    (void)sender;
    answer = vant::PromptAnswer::granted;
    [NSApp stopModal];
}

- (void)cancel:(id)sender {
    (void)sender;
    answer = vant::PromptAnswer::cancelled;
    [NSApp stopModal];
}

@end

namespace vant {

PromptAnswer askAdministrator() {
    @autoreleasepool {
        VantAuthorizationPanel *panel = [[[VantAuthorizationPanel alloc] init] autorelease];
        [panel performSelectorOnMainThread:@selector(ask) withObject:nil waitUntilDone:YES];
        return [panel answer];
    }
}

} // namespace vant
