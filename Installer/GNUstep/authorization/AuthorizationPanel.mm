#import <AppKit/AppKit.h>
#import <GNUstepGUI/GSDisplayServer.h>

#import "GNUstep/authorization/Padlock.h"

#include "GNUstep/authorization/AuthorizationPrompt.hpp"
#include "GNUstep/authorization/PanelTexts.hpp"

#include <vector>

namespace {

constexpr CGFloat panelWidth = 500;
constexpr CGFloat panelHeight = 186;
constexpr CGFloat textLeft = 100;
constexpr CGFloat textWidth = panelWidth - textLeft - 20;
constexpr NSTimeInterval keyRequestPeriod = 0.2;
constexpr int mostKeyRequests = 50;

NSString *string(std::string_view text) {
    return [[[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding] autorelease];
}

std::vector<std::string> userLanguages() {
    std::vector<std::string> languages;
    for (NSString *language in [NSUserDefaults userLanguages])
        languages.emplace_back([language UTF8String]);
    return languages;
}

NSString *hostNameIn(NSDictionary *information) {
    for (NSString *key in [NSArray arrayWithObjects:@"CFBundleDisplayName", @"CFBundleName", @"ApplicationName", nil]) {
        NSString *name = [information objectForKey:key];
        if ([name isKindOfClass:[NSString class]] && [name length] > 0)
            return name;
    }
    return nil;
}

/// The name that the host shows for itself in the user's language, else that of its process.
NSString *hostName() {
    NSBundle *host = [NSBundle mainBundle];
    // GNUstep's localized information is that of another file, and knows nothing of this table.
    NSString *localized = [host localizedStringForKey:@"CFBundleDisplayName" value:@"" table:@"InfoPlist"];
    if ([localized length] > 0 && ![localized isEqualToString:@"CFBundleDisplayName"])
        return localized;
    NSString *name = hostNameIn([host infoDictionary]);
    return name != nil ? name : [[NSProcessInfo processInfo] processName];
}

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
/// decided by the account that the host runs under, and the panel asks whether to go on.
@interface VantAuthorizationPanel : NSObject <NSWindowDelegate> {
    NSPanel *panel;
    NSConditionLock *answered;
    vant::PromptAnswer answer;
    BOOL modal;
    int keyRequests;
}
/// Main thread: shows the panel and runs it modally until it is answered.
- (void)runModal;
/// Any other thread: has the main thread show the panel, whose run loop goes on, waits for the answer, and leaves the
/// caller's reference to the main thread: a window may go there alone.
- (vant::PromptAnswer)waitForAnswerAndRelease;
- (vant::PromptAnswer)answer;
@end

@implementation VantAuthorizationPanel

- (id)init {
    if ((self = [super init])) {
        answer = vant::PromptAnswer::cancelled;
        answered = [[NSConditionLock alloc] initWithCondition:NO];
    }
    return self;
}

- (void)dealloc {
    [panel release];
    [answered release];
    [super dealloc];
}

- (vant::PromptAnswer)answer {
    return answer;
}

- (void)runModal {
    modal = YES;
    [self show];
    [NSApp runModalForWindow:panel];
    [self close];
}

- (vant::PromptAnswer)waitForAnswerAndRelease {
    NSArray *modes =
        [NSArray arrayWithObjects:NSDefaultRunLoopMode, NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode, nil];
    [self performSelectorOnMainThread:@selector(show) withObject:nil waitUntilDone:NO modes:modes];
    [answered lockWhenCondition:YES];
    [answered unlock];
    const vant::PromptAnswer given = answer;
    [self performSelectorOnMainThread:@selector(release) withObject:nil waitUntilDone:NO modes:modes];
    return given;
}

- (void)show {
    [self build];
    [panel center];
    [NSApp activateIgnoringOtherApps:YES];
    [panel makeKeyAndOrderFront:nil];
    [panel makeFirstResponder:[panel initialFirstResponder]];
    keyRequests = mostKeyRequests;
    [self requestKeys];
}

/// A window manager puts the panel on the screen in its own time. Until then it has no keys to be given, and when
/// another window of the host is put there at the same moment, that one may get them after this has asked.
- (void)requestKeys {
    if (keyRequests == 0 || ![panel isKeyWindow])
        return;
    --keyRequests;
    [GSServerForWindow(panel) setinputfocus:(int)[panel windowNumber]];
    [self performSelector:@selector(requestKeys)
               withObject:nil
               afterDelay:keyRequestPeriod
                  inModes:[NSArray arrayWithObjects:NSDefaultRunLoopMode, NSModalPanelRunLoopMode, nil]];
}

- (void)close {
    [NSObject cancelPreviousPerformRequestsWithTarget:self];
    [panel setDelegate:nil];
    [panel orderOut:nil];
}

- (void)build {
    panel = [[NSPanel alloc] initWithContentRect:NSMakeRect(0, 0, panelWidth, panelHeight)
                                       styleMask:NSTitledWindowMask
                                         backing:NSBackingStoreBuffered
                                           defer:NO];
    const vant::PanelTexts &texts = vant::panelTexts(userLanguages());
    [panel setTitle:string(texts.title)];
    [panel setReleasedWhenClosed:NO];
    [panel setDelegate:self];
    [panel setHidesOnDeactivate:NO];
    [panel setLevel:NSModalPanelWindowLevel];
    // Above a modal panel of the host too: the installer thread that asks knows nothing of one.
    [panel setWorksWhenModal:YES];
    [self addIcon];
    [self addTexts:texts];
    NSButton *cancel = [self addButton:string(texts.cancel) action:@selector(cancel:) right:panelWidth - 116];
    NSButton *grant = [self addButton:string(texts.grant) action:@selector(grant:) right:panelWidth - 20];
    [cancel setKeyEquivalent:@"\033"];
    [grant setKeyEquivalent:@"\r"];
    [panel setDefaultButtonCell:[grant cell]];
    [panel setInitialFirstResponder:grant];
    [grant setNextKeyView:cancel];
    [cancel setNextKeyView:grant];
}

- (void)addIcon {
    NSRect frame = NSMakeRect(24, panelHeight - 84, 56, 64);
    [[panel contentView] addSubview:[[[VantPadlock alloc] initWithFrame:frame] autorelease]];
}

- (void)addTexts:(const vant::PanelTexts &)texts {
    NSString *headline = [string(texts.headline) stringByReplacingOccurrencesOfString:@"%@" withString:hostName()];
    NSString *user = [NSString stringWithFormat:@"%@  %@", string(texts.userName), NSFullUserName()];
    NSView *content = [panel contentView];
    [content addSubview:label(headline, NSMakeRect(textLeft, panelHeight - 56, textWidth, 36),
                              [NSFont boldSystemFontOfSize:13])];
    [content addSubview:label(string(texts.detail), NSMakeRect(textLeft, panelHeight - 96, textWidth, 34),
                              [NSFont systemFontOfSize:12])];
    [content
        addSubview:label(user, NSMakeRect(textLeft, panelHeight - 122, textWidth, 18), [NSFont systemFontOfSize:12])];
}

- (NSButton *)addButton:(NSString *)title action:(SEL)action right:(CGFloat)right {
    NSButton *button = [[[NSButton alloc] initWithFrame:NSMakeRect(right - 88, 16, 88, 26)] autorelease];
    [button setTitle:title];
    [button setBezelStyle:NSRoundedBezelStyle];
    [button setTarget:self];
    [button setAction:action];
    [[panel contentView] addSubview:button];
    return button;
}

// Window managers offer to close a panel that has no close button of its own.
- (BOOL)windowShouldClose:(id)sender {
    [self cancel:sender];
    return NO;
}

- (void)grant:(id)sender {
    (void)sender;
    [self endWith:vant::PromptAnswer::granted];
}

- (void)cancel:(id)sender {
    (void)sender;
    [self endWith:vant::PromptAnswer::cancelled];
}

- (void)endWith:(vant::PromptAnswer)given {
    if (modal) {
        answer = given;
        [NSApp stopModal];
        return;
    }
    [self close];
    [answered lock];
    answer = given;
    [answered unlockWithCondition:YES];
}

@end

namespace vant {

PromptAnswer askAdministrator() {
    if (NSApp == nil)
        return PromptAnswer::impossible;
    @autoreleasepool {
        VantAuthorizationPanel *panel = [[VantAuthorizationPanel alloc] init];
        if (![NSThread isMainThread])
            return [panel waitForAnswerAndRelease];
        [panel autorelease];
        [panel runModal];
        return [panel answer];
    }
}

} // namespace vant
