#import "shell/VantInstallation+HostLink.h"

/// Whether the object takes the message, itself or by passing it on.
static BOOL takes(id object, SEL message) {
    return [object respondsToSelector:message] || [object methodSignatureForSelector:message] != nil;
}

@implementation VantInstallation (HostLink)

- (BOOL)canTellHost:(SEL)message {
    if (takes(mObserver, message))
        return YES;
    if (mObserver != nil)
        [self trace:@"***ERROR*** Model Observer lacks [%@]", NSStringFromSelector(message)];
    return NO;
}

- (void)enableHostButton1:(BOOL)enabled {
    if ([self canTellHost:@selector(setIsButton1Enabled:)])
        [mObserver setIsButton1Enabled:enabled];
}

- (void)enableHostButton2:(BOOL)enabled {
    if ([self canTellHost:@selector(setIsButton2Enabled:)])
        [mObserver setIsButton2Enabled:enabled];
}

- (void)withdrawHostButton3 {
    if ([self canTellHost:@selector(setIsButton3Enabled:)])
        [mObserver setIsButton3Enabled:NO];
    if ([self canTellHost:@selector(setIsButton3Hidden:)])
        [mObserver setIsButton3Hidden:YES];
}

- (void)tellHostToContinue {
    if (takes(mObserver, @selector(continueToNextPlugin)))
        [mObserver continueToNextPlugin];
}

- (id)hostLanguageParser {
    // By name, so that an observer of any class will do.
    return [self canTellHost:@selector(getLangParser)] ? [mObserver performSelector:@selector(getLangParser)] : nil;
}

- (NSString *)hostStringForKey:(NSString *)key {
    // Hosts' parsers take a second, empty string, which they ignore; only the key selects the text.
    id parser = [self langParser];
    if (!takes(parser, @selector(getStringByKey:)))
        return nil;
    id text = [parser performSelector:@selector(getStringByKey:) withObject:key withObject:@""];
    return [text isKindOfClass:[NSString class]] ? text : nil;
}

@end
