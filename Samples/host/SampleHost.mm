// A host at its smallest: one window, the pane's page, three buttons. It installs what the SelectedInput.plist beside
// the application names, and ends when the pane tells it to go on. Documentation/host.md explains it.
#import "VantInstallation.h"

#include <cstdlib>

@interface SampleHost : NSObject <VantObserver> {
    NSWindow *window;
    NSArray *buttons;
    VantInstallation *pane;
}
@end

/// What the earlier pages of a wizard do: leaves the user's choices where the pane reads them. Here they come from the
/// media, where paths are relative; the pane takes whole ones.
static void writeChoices(NSString *media) {
    NSMutableArray *selection = [NSMutableArray array];
    for (id entry in [NSArray arrayWithContentsOfFile:[media stringByAppendingPathComponent:@"SelectedInput.plist"]]) {
        NSString *location = [media stringByAppendingPathComponent:[entry valueForKeyPath:@"LOCATION.text"]];
        [selection addObject:@{@"TYPE" : [entry objectForKey:@"TYPE"], @"LOCATION" : @{@"text" : location}}];
    }
    NSMutableDictionary *settings = [NSMutableDictionary
        dictionaryWithContentsOfFile:[media stringByAppendingPathComponent:@"VantUserSettings.plist"]];
    NSString *second = [settings valueForKeyPath:@"PackagesInfo.Scan Driver1.LOCATION"];
    if (second != nil)
        [settings setObject:@{
            @"Scan Driver1" : @{@"LOCATION" : [media stringByAppendingPathComponent:second]}
        }
                     forKey:@"PackagesInfo"];
    NSString *folder = [NSTemporaryDirectory() stringByAppendingPathComponent:@"Vantrel"];
    [[NSFileManager defaultManager] createDirectoryAtPath:[folder stringByAppendingPathComponent:@"CD"]
                              withIntermediateDirectories:YES
                                               attributes:nil
                                                    error:nullptr];
    [selection writeToFile:[folder stringByAppendingPathComponent:@"CD/SelectedInput.plist"] atomically:YES];
    [settings writeToFile:[folder stringByAppendingPathComponent:@"VantUserSettings.plist"] atomically:YES];
}

@implementation SampleHost

- (void)applicationDidFinishLaunching:(NSNotification *)notification {
    (void)notification;
    [self openWindow];
    writeChoices([[[NSBundle mainBundle] bundlePath] stringByDeletingLastPathComponent]);
    NSString *plugIns = [[NSBundle mainBundle] builtInPlugInsPath];
    NSBundle *bundle = [NSBundle bundleWithPath:[plugIns stringByAppendingPathComponent:@"VantInstallation.bundle"]];
    // Returns when the administrator prompt has been answered. Never released: what the pane has started goes on.
    pane = [[[bundle principalClass] alloc] initWithModel:@{@"Model Observer" : self, @"VendorName" : @"Quorvel"}];
    if (![[pane isPluginValid] isEqualToString:@"YES"])
        std::exit(EXIT_FAILURE);
    [window setTitle:[pane windowTitle]];
    [[pane contentView] setFrame:NSMakeRect(0, 50, 620, 420)];
    [[window contentView] addSubview:[pane contentView]];
}

- (void)openWindow {
    window = [[NSWindow alloc] initWithContentRect:NSMakeRect(200, 200, 620, 470)
                                         styleMask:NSWindowStyleMaskTitled
                                           backing:NSBackingStoreBuffered
                                             defer:NO];
    NSMutableArray *row = [NSMutableArray array];
    for (NSString *title in @[ @"Go Back", @"Continue", @"Cancel" ]) {
        const CGFloat left = 300 + 102 * static_cast<CGFloat>([row count]);
        NSButton *button = [[[NSButton alloc] initWithFrame:NSMakeRect(left, 12, 96, 26)] autorelease];
        [button setTitle:title];
        [button setTarget:self];
        [button setAction:@selector(buttonPressed:)];
        [[window contentView] addSubview:button];
        [row addObject:button];
    }
    buttons = [row retain];
    [window makeKeyAndOrderFront:self];
}

- (void)buttonPressed:(id)button {
    const SEL actions[] = {@selector(performButton1Action), @selector(performButton2Action),
                           @selector(performButton3Action)};
    [pane performSelector:actions[[buttons indexOfObject:button]]];
}

// The observer. The end arrives on an installer's thread, and controls are the main thread's.

- (void)setIsButton1Enabled:(BOOL)enabled {
    [self setButton:0 key:@"enabled" value:enabled];
}
- (void)setIsButton2Enabled:(BOOL)enabled {
    [self setButton:1 key:@"enabled" value:enabled];
}
- (void)setIsButton3Enabled:(BOOL)enabled {
    [self setButton:2 key:@"enabled" value:enabled];
}
- (void)setIsButton1Hidden:(BOOL)hidden {
    [self setButton:0 key:@"hidden" value:hidden];
}
- (void)setIsButton2Hidden:(BOOL)hidden {
    [self setButton:1 key:@"hidden" value:hidden];
}
- (void)setIsButton3Hidden:(BOOL)hidden {
    [self setButton:2 key:@"hidden" value:hidden];
}

- (void)setButton:(NSUInteger)index key:(NSString *)key value:(BOOL)value {
    [self performSelectorOnMainThread:@selector(apply:) withObject:@[ @(index), key, @(value) ] waitUntilDone:NO];
}

- (void)apply:(NSArray *)change {
    NSButton *button = [buttons objectAtIndex:[[change objectAtIndex:0] unsignedIntegerValue]];
    [button setValue:[change objectAtIndex:2] forKey:[change objectAtIndex:1]];
}

- (id)getLangParser {
    return self;
}

- (NSString *)getStringByKey:(NSString *)key {
    return [[NSBundle mainBundle] localizedStringForKey:key value:@"" table:nil];
}

- (void)continueToNextPlugin {
    [self performSelectorOnMainThread:@selector(goOn) withObject:nil waitUntilDone:NO];
}

// Here the wizard would turn its page. The process is left at once: threads of the pane may still be winding up.
- (void)goOn {
    std::_Exit(EXIT_SUCCESS);
}

@end

int main() {
    @autoreleasepool {
        SampleHost *host = [[SampleHost alloc] init];
        [[NSApplication sharedApplication] setDelegate:static_cast<id>(host)];
        [NSApp run];
        [host release];
    }
    return EXIT_FAILURE;
}
