#import "BenchHost.h"
#import "install/chain/VantInstallation+InstallChain.h"
#import "slides/VantInstallation+SlideRotation.h"

#include <cstdio>
#include <ctime>

// What the pane costs where it meets the eye, in a window on a display. Benchmarks/run says in VANT_BENCH_MODE what is
// measured; each mode prints one line of "name value" pairs.

using namespace vant::bench;

/// A table of nothing but text.
@interface PlainRows : NSObject {
@public
    NSInteger count;
}
@end

@implementation PlainRows
- (NSInteger)numberOfRowsInTableView:(NSTableView *)tableView {
    (void)tableView;
    return count;
}
- (id)tableView:(NSTableView *)tableView objectValueForTableColumn:(NSTableColumn *)column row:(NSInteger)row {
    (void)tableView;
    (void)column;
    (void)row;
    return @"Print Driver";
}
@end

namespace {

constexpr int slideChanges = 200;
constexpr int tableRows = 1000;

double averageSeconds(int times, const std::function<void(int)> &work) {
    const auto start = Clock::now();
    for (int i = 0; i < times; ++i) {
        @autoreleasepool {
            work(i);
        }
    }
    return secondsSince(start) / times;
}

/// A slide change with all that it looks up, against loading and drawing the image that it shows.
void measureSlides() {
    VantInstallation *pane = shownPane([[BenchObserver alloc] init]);
    NSWindow *paneWindow = [[pane contentView] window];
    NSImageView *picture = [[NSImageView alloc] initWithFrame:[[pane valueForKey:@"imageView"] bounds]];
    NSWindow *pictureWindow = windowWith(picture);
    NSBundle *bundle = [NSBundle bundleForClass:[pane class]];
    NSString *const paths[] = {[bundle pathForResource:@"Mobile" ofType:@"jpg"], [bundle pathForResource:@"Toner"
                                                                                                  ofType:@"jpg"]};
    const auto change = [&](int) {
        [pane changeImage:nil];
        [paneWindow displayIfNeeded];
    };
    const auto load = [&](int i) {
        [picture setImage:[[[NSImage alloc] initWithContentsOfFile:paths[i % 2]] autorelease]];
        [pictureWindow displayIfNeeded];
    };
    averageSeconds(10, change);
    averageSeconds(10, load);
    const double changing = averageSeconds(slideChanges, change);
    const double loading = averageSeconds(slideChanges, load);
    std::printf("change %.6f image %.6f\n", changing, loading);
}

/// The same place, the same rows and columns, with text cells alone.
NSTableView *plainTableLike(NSTableView *table) {
    NSScrollView *scroll = [[NSScrollView alloc] initWithFrame:[[table enclosingScrollView] frame]];
    NSTableView *plain = [[NSTableView alloc] initWithFrame:[table frame]];
    [scroll setHasVerticalScroller:YES];
    [scroll setDocumentView:plain];
    for (NSTableColumn *column in [table tableColumns]) {
        NSTableColumn *text = [[NSTableColumn alloc] initWithIdentifier:[column identifier]];
        [text setWidth:[column width]];
        [plain addTableColumn:text];
    }
    [plain setHeaderView:nil];
    [plain setRowHeight:[table rowHeight]];
    PlainRows *rows = [[PlainRows alloc] init];
    rows->count = tableRows;
    [plain setDataSource:(id)rows];
    [plain reloadData];
    NSView *content = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 620, 420)];
    [content addSubview:scroll];
    windowWith(content);
    return plain;
}

/// Scrolling through the whole table, four rows at a time, everything in sight drawn after each step.
double secondsToScrollThrough(NSTableView *table) {
    return averageSeconds(tableRows / 4, [table](int step) {
        [table scrollRowToVisible:(step * 4 + 4) % tableRows];
        [table display];
    });
}

void measureTable() {
    writeSelection(tableRows);
    NSTableView *table = [shownPane([[BenchObserver alloc] init]) valueForKey:@"list1"];
    const auto shown = Clock::now();
    runUntil([&] { return secondsSince(shown) > 0.5; });
    NSTableView *plain = plainTableLike(table);
    secondsToScrollThrough(table);
    secondsToScrollThrough(plain);
    const double ours = secondsToScrollThrough(table);
    std::printf("rows %d table %.6f plain %.6f\n", (int)[table numberOfRows], ours, secondsToScrollThrough(plain));
}

double mainThreadSeconds() {
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// One package whose installer says how far it is as often as the settings say: the main thread's share of it.
void measureChatter() {
    writeSelection(0);
    BenchObserver *observer = [[BenchObserver alloc] init];
    VantInstallation *pane = shownPane(observer);
    const double before = mainThreadSeconds();
    const auto start = Clock::now();
    [pane InstallCDComponents:nil];
    const int late = handleEventsUntil([&] { return observer->finished.load(); });
    std::printf("busy %.6f seconds %.6f late %d\n", mainThreadSeconds() - before, secondsSince(start), late);
}

} // namespace

int main() {
    @autoreleasepool {
        const std::string mode = setting("VANT_BENCH_MODE");
        [NSApplication sharedApplication];
        [NSApp finishLaunching];
        if (mode == "slides")
            measureSlides();
        else if (mode == "table")
            measureTable();
        else if (mode == "chatty")
            measureChatter();
        else
            return std::fprintf(stderr, "LooksBench: VANT_BENCH_MODE is slides, table or chatty\n"), 2;
    }
    return 0;
}
