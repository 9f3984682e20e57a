#import "InstallNotifications.h"
#import "VantInstallation+ICCProfiles.h"
#import "VantInstallation+MediaFlow.h"
#import "VantInstallation.h"

#include <cctype>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

// One measured process. Benchmarks/run sets its folders and, in VANT_BENCH_MODE and VANT_BENCH_OPERAND, what it
// measures: the platform opens bare arguments as documents. Each mode prints one line of "name value" pairs.

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

@interface BenchObserver : NSObject {
@public
    BOOL finished;
}
@end

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
    finished = YES;
}
@end

namespace {

std::string setting(const char *name) {
    const char *value = std::getenv(name);
    return value == nullptr ? "" : value;
}

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

std::size_t openDescriptors() {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
}

/// Children of this process that have ended and that nobody has waited for.
int zombies() {
    int count = 0;
    const std::string self = std::to_string(getpid());
    for (const auto &entry : fs::directory_iterator("/proc")) {
        if (std::isdigit(static_cast<unsigned char>(entry.path().filename().string().front())) == 0)
            continue;
        std::ifstream stat(entry.path() / "stat");
        std::string text{std::istreambuf_iterator<char>(stat), {}};
        const auto bracket = text.rfind(')');
        if (bracket != std::string::npos && text.compare(bracket + 2, 2 + self.size() + 1, "Z " + self + " ") == 0)
            ++count;
    }
    return count;
}

/// Peak resident memory in kilobytes.
long peakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:"))
            return std::strtol(line.c_str() + 6, nullptr, 10);
    }
    return 0;
}

void runUntil(const std::function<bool()> &done) {
    while (!done()) {
        @autoreleasepool {
            [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode
                                     beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.05]];
        }
    }
}

void writeSelection(int count) {
    NSMutableArray *selection = [NSMutableArray array];
    for (int i = 0; i < count; ++i) {
        NSString *path = [NSString stringWithFormat:@"/packages/Package %d.pkg", i];
        [selection addObject:@{@"TYPE" : @{@"text" : @"Print Driver"}, @"LOCATION" : @{@"text" : path}}];
    }
    NSString *folder = [NSTemporaryDirectory() stringByAppendingPathComponent:@"Vantrel/CD"];
    [[NSFileManager defaultManager] createDirectoryAtPath:folder
                              withIntermediateDirectories:YES
                                               attributes:nil
                                                    error:nullptr];
    [selection writeToFile:[folder stringByAppendingPathComponent:@"SelectedInput.plist"] atomically:YES];
}

VantInstallation *createPane(BenchObserver *observer) {
    NSBundle *bundle = [NSBundle bundleWithPath:@VANT_BENCH_BUNDLE];
    NSDictionary *record = @{@"Model Observer" : observer, @"VendorName" : @"Quorvel"};
    return [[[bundle principalClass] alloc] initWithModel:record];
}

/// A media run of `count` packages, without the delay before the first.
void measureChain(int count) {
    writeSelection(count);
    BenchObserver *observer = [[BenchObserver alloc] init];
    VantInstallation *pane = createPane(observer);
    [NSObject cancelPreviousPerformRequestsWithTarget:pane];
    const std::size_t before = openDescriptors();
    const auto start = Clock::now();
    [pane InstallCDComponents:nil];
    runUntil([&] { return observer->finished; });
    std::printf("packages %d seconds %.4f descriptors %zd zombies %d peak_kb %ld\n", count + 1, secondsSince(start),
                static_cast<ssize_t>(openDescriptors()) - static_cast<ssize_t>(before), zombies(), peakMemory());
}

/// The pane's creation, rights granted without a prompt.
void measureCreation() {
    writeSelection(7);
    BenchObserver *observer = [[BenchObserver alloc] init];
    [[NSBundle bundleWithPath:@VANT_BENCH_BUNDLE] load];
    const auto start = Clock::now();
    createPane(observer);
    std::printf("seconds %.4f peak_kb %ld\n", secondsSince(start), peakMemory());
}

/// The reference of the creation: a host that opens the same interface description and nothing else.
void measureOpening() {
    NSBundle *bundle = [NSBundle bundleWithPath:@VANT_BENCH_BUNDLE];
    id owner = [[bundle principalClass] alloc];
    const auto start = Clock::now();
    const BOOL opened = [NSBundle loadNibNamed:@"VTInstallation" owner:owner];
    std::printf("seconds %.4f opened %d peak_kb %ld\n", secondsSince(start), opened, peakMemory());
}

/// Copying the profiles of a folder into an empty home.
void measureProfiles(NSString *folder) {
    BenchObserver *observer = [[BenchObserver alloc] init];
    VantInstallation *pane = createPane(observer);
    [NSObject cancelPreviousPerformRequestsWithTarget:pane];
    const auto start = Clock::now();
    [pane copyIccProfilesToTmpandInstall:folder];
    std::printf("seconds %.4f\n", secondsSince(start));
}

} // namespace

int main() {
    @autoreleasepool {
        const std::string mode = setting("VANT_BENCH_MODE");
        const std::string operand = setting("VANT_BENCH_OPERAND");
        [NSApplication sharedApplication];
        [NSApp finishLaunching];
        if (mode == "chain")
            measureChain(std::atoi(operand.c_str()));
        else if (mode == "create")
            measureCreation();
        else if (mode == "open")
            measureOpening();
        else if (mode == "profiles")
            measureProfiles([NSString stringWithUTF8String:operand.c_str()]);
        else
            return std::fprintf(stderr, "PaneBench: VANT_BENCH_MODE is chain, create, open or profiles\n"), 2;
    }
    return 0;
}
