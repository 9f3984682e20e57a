#import <AppKit/AppKit.h>

#include "AuthorizationPrompt.hpp"

namespace {

constexpr CGFloat panelWidth = 460;
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

/// The panel that asks for an administrator's leave. Debian's user has no password to give it: who may write where is
/// decided by the account that the host runs under, and the panel asks whether to go on. Main thread.
@interface VantAuthorizationPanel : NSObject {
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
    [NSApp runModalForWindow:panel];
    [panel orderOut:nil];
}

- (void)build {
    panel = [[NSPanel alloc] initWithContentRect:NSMakeRect(0, 0, panelWidth, panelHeight)
                                       styleMask:NSTitledWindowMask
                                         backing:NSBackingStoreBuffered
                                           defer:NO];
    [panel setTitle:@"Administrator Rights"];
    [panel setReleasedWhenClosed:NO];
    [self addIcon];
    [self addTexts];
    [self addButton:@"Cancel" action:@selector(cancel:) key:@"\033" right:panelWidth - 116];
    [self addButton:@"OK" action:@selector(grant:) key:@"\r" right:panelWidth - 20];
}

- (void)addIcon {
    NSImageView *icon = [[[NSImageView alloc] initWithFrame:NSMakeRect(20, panelHeight - 84, 64, 64)] autorelease];
    [icon setImage:[NSApp applicationIconImage]];
    [icon setImageScaling:NSImageScaleProportionallyUpOrDown];
    [[panel contentView] addSubview:icon];
}

- (void)addTexts {
    NSString *host = [[NSProcessInfo processInfo] processName];
    NSString *title = [NSString stringWithFormat:@"%@ wants to make changes.", host];
    NSString *detail = @"It is about to install software for all users of this computer.";
    NSString *user = [NSString stringWithFormat:@"User Name:  %@", NSFullUserName()];
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
