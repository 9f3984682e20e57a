#import "BenchHost.h"

#include <cstdlib>

@implementation BenchObserver
- (void)setIsButton1Enabled:(BOOL)enabled {
    (void)enabled;
}
- (void)setIsButton2Enabled:(BOOL)enabled {
    (void)enabled;
}
- (void)setIsButton3Enabled:(BOOL)enabled {
    (void)enabled;
}
- (void)setIsButton3Hidden:(BOOL)hidden {
    (void)hidden;
}
- (id)getLangParser {
    return self;
}
- (NSString *)getStringByKey:(NSString *)key {
    return key;
}
- (void)continueToNextPlugin {
    finishedAt = vant::bench::Clock::now();
    finished = true;
}
@end

namespace vant::bench {

static constexpr NSTimeInterval frame = 1.0 / 60;

std::string setting(const char *name) {
    const char *value = std::getenv(name);
    return value == nullptr ? "" : value;
}

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void runUntil(const std::function<bool()> &done) {
    while (!done()) {
        @autoreleasepool {
            [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode
                                     beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.05]];
        }
    }
}

void writePropertyList(id list, NSString *name) {
    NSString *path = [NSTemporaryDirectory() stringByAppendingPathComponent:name];
    [[NSFileManager defaultManager] createDirectoryAtPath:[path stringByDeletingLastPathComponent]
                              withIntermediateDirectories:YES
                                               attributes:nil
                                                    error:nullptr];
    [list writeToFile:path atomically:YES];
}

NSDictionary *component(NSString *location) {
    return @{@"TYPE" : @{@"text" : @"Print Driver"}, @"LOCATION" : @{@"text" : location}};
}

void writeSelection(int count) {
    NSMutableArray *selection = [NSMutableArray array];
    for (int i = 0; i < count; ++i)
        [selection addObject:component([NSString stringWithFormat:@"/packages/Package %d.pkg", i])];
    writePropertyList(selection, @"Vantrel/CD/SelectedInput.plist");
}

VantInstallation *createPane(BenchObserver *observer) {
    NSBundle *bundle = [NSBundle bundleWithPath:@VANT_BENCH_BUNDLE];
    NSDictionary *record = @{@"Model Observer" : observer, @"VendorName" : @"Quorvel"};
    return [[[bundle principalClass] alloc] initWithModel:record];
}

NSWindow *windowWith(NSView *content) {
    NSWindow *window = [[NSWindow alloc] initWithContentRect:NSMakeRect(50, 50, 620, 420)
                                                   styleMask:NSTitledWindowMask
                                                     backing:NSBackingStoreBuffered
                                                       defer:NO];
    [window setContentView:content];
    [window makeKeyAndOrderFront:nil];
    [window display];
    return window;
}

VantInstallation *shownPane(BenchObserver *observer) {
    VantInstallation *pane = createPane(observer);
    [NSObject cancelPreviousPerformRequestsWithTarget:pane];
    windowWith([pane contentView]);
    return pane;
}

int handleEventsUntil(const std::function<bool()> &done) {
    int late = 0;
    while (!done()) {
        @autoreleasepool {
            NSEvent *event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                                untilDate:[NSDate dateWithTimeIntervalSinceNow:frame]
                                                   inMode:NSDefaultRunLoopMode
                                                  dequeue:YES];
            const auto start = Clock::now();
            if (event != nil)
                [NSApp sendEvent:event];
            [NSApp updateWindows];
            late += secondsSince(start) > frame ? 1 : 0;
        }
    }
    return late;
}

} // namespace vant::bench
