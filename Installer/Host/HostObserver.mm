#import "HostObserver.h"

/// The host's strings, by key, in the language of this process.
@interface LanguageParser : NSObject
- (NSString *)getStringByKey:(NSString *)key;
@end

@implementation LanguageParser

- (NSString *)getStringByKey:(NSString *)key {
    return [[NSBundle mainBundle] localizedStringForKey:key value:@"" table:nil];
}

@end

@implementation HostObserver

- (id)initWithWindow:(WizardWindow *)wizardWindow timeline:(vant::host::Timeline *)runTimeline {
    self = [super init];
    if (self == nil)
        return nil;
    window = wizardWindow;
    timeline = runTimeline;
    parser = [[LanguageParser alloc] init];
    return self;
}

- (void)dealloc {
    [parser release];
    [button2Enabled release];
    [super dealloc];
}

- (void)note:(const char *)what of:(int)number value:(BOOL)value {
    NSString *call = [NSString stringWithFormat:@"setIsButton%d%s: %s", number, what, value ? "YES" : "NO"];
    timeline->record("observer", [call UTF8String]);
}

- (void)button:(int)number enabled:(BOOL)enabled {
    [self note:"Enabled" of:number value:enabled];
    [self performSelectorOnMainThread:@selector(applyEnabled:)
                           withObject:@[ @(number), @(enabled ? 1 : 0) ]
                        waitUntilDone:[NSThread isMainThread]];
}

- (void)button:(int)number hidden:(BOOL)hidden {
    [self note:"Hidden" of:number value:hidden];
    [self performSelectorOnMainThread:@selector(applyHidden:)
                           withObject:@[ @(number), @(hidden ? 1 : 0) ]
                        waitUntilDone:[NSThread isMainThread]];
}

- (void)applyEnabled:(NSArray *)change {
    const int number = [[change objectAtIndex:0] intValue];
    const BOOL enabled = [[change objectAtIndex:1] boolValue];
    [window setButton:number enabled:enabled];
    if (number != 2)
        return;
    [button2Enabled release];
    button2Enabled = enabled ? [[NSDate date] retain] : nil;
}

- (void)applyHidden:(NSArray *)change {
    [window setButton:[[change objectAtIndex:0] intValue] hidden:[[change objectAtIndex:1] boolValue]];
}

- (void)setIsButton1Enabled:(BOOL)enabled {
    [self button:1 enabled:enabled];
}

- (void)setIsButton2Enabled:(BOOL)enabled {
    [self button:2 enabled:enabled];
}

- (void)setIsButton3Enabled:(BOOL)enabled {
    [self button:3 enabled:enabled];
}

- (void)setIsButton1Hidden:(BOOL)hidden {
    [self button:1 hidden:hidden];
}

- (void)setIsButton2Hidden:(BOOL)hidden {
    [self button:2 hidden:hidden];
}

- (void)setIsButton3Hidden:(BOOL)hidden {
    [self button:3 hidden:hidden];
}

- (id)getLangParser {
    return parser;
}

- (void)continueToNextPlugin {
    timeline->record("observer", "continueToNextPlugin");
    [self performSelectorOnMainThread:@selector(goOn) withObject:nil waitUntilDone:NO];
}

- (void)goOn {
    continued = YES;
}

- (BOOL)continued {
    return continued;
}

- (NSDate *)button2Enabled {
    return button2Enabled;
}

@end
