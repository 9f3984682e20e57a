#import <AppKit/AppKit.h>

#include <cstdio>

// A host of a few lines, that knows of nothing but the bundle's contract: PlainHost BUNDLE. It prints whether there is
// a pane with a view, whether the pane is valid, and where a shell command of a task finds ditto.

@interface NSObject (Pane)
- (id)initWithModel:(NSDictionary *)model;
- (NSView *)contentView;
- (NSString *)isPluginValid;
@end

int main(int count, char **arguments) {
    @autoreleasepool {
        [NSApplication sharedApplication];
        NSString *path = [NSString stringWithUTF8String:count > 1 ? arguments[1] : ""];
        id pane = [[[[NSBundle bundleWithPath:path] principalClass] alloc] initWithModel:[NSDictionary dictionary]];
        [[NSRunLoop currentRunLoop] runUntilDate:[NSDate dateWithTimeIntervalSinceNow:0.5]];
        std::printf("view %s\n", [[pane contentView] isKindOfClass:[NSView class]] ? "YES" : "NO");
        std::printf("valid %s\n", [[pane isPluginValid] UTF8String]);
        std::fflush(stdout);
        NSArray *command = [NSArray arrayWithObjects:@"-c", @"echo ditto $(command -v ditto)", nil];
        [[NSTask launchedTaskWithLaunchPath:@"/bin/sh" arguments:command] waitUntilExit];
    }
    return 0;
}
