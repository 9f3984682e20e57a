#import "BenchHost.h"
#import "install/chain/VantInstallation+InstallChain.h"

#include "Memory.hpp"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <mutex>
#include <sys/resource.h>

// A whole media run with its table in a window on a display, and what the process holds on the way. Benchmarks/run says
// in VANT_BENCH_OPERAND how many packages were selected.

using namespace vant::bench;

/// Looks at the process after some packages of a run.
@interface MemoryWitness : NSObject {
    std::mutex mutex;
    int ended;
    std::map<int, long> memory;
}
- (void)packageEnded:(NSNotification *)notification;
/// Resident memory in KiB after so many packages; 0 when the run never got there.
- (long)memoryAfter:(int)packages;
@end

@implementation MemoryWitness

- (id)init {
    if ((self = [super init])) {
        for (NSString *name in @[ @"InstallNextCDComponent", @"CDInstallComplete" ])
            [[NSNotificationCenter defaultCenter] addObserver:self
                                                     selector:@selector(packageEnded:)
                                                         name:name
                                                       object:nil];
    }
    return self;
}

- (void)packageEnded:(NSNotification *)notification {
    (void)notification;
    const std::lock_guard lock(mutex);
    if (++ended % 100 == 0)
        memory[ended] = residentMemory();
}

- (long)memoryAfter:(int)packages {
    const std::lock_guard lock(mutex);
    const auto found = memory.find(packages);
    return found == memory.end() ? 0 : found->second;
}

@end

namespace {

double seconds(const timeval &time) {
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

double cpuSeconds(int who) {
    rusage used{};
    getrusage(who, &used);
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

void measureRun(int count) {
    writeSelection(count);
    BenchObserver *observer = [[BenchObserver alloc] init];
    const auto created = Clock::now();
    VantInstallation *pane = shownPane(observer);
    handleEventsUntil([&] { return secondsSince(created) > 1.0; });
    MemoryWitness *witness = [[MemoryWitness alloc] init];
    const long before = residentMemory();
    const double own = cpuSeconds(RUSAGE_SELF);
    const double tools = cpuSeconds(RUSAGE_CHILDREN);
    const auto start = Clock::now();
    [pane InstallCDComponents:nil];
    handleEventsUntil([&] { return observer->finished.load(); });
    std::printf("packages %d seconds %.4f cpu %.4f tools_cpu %.4f before_kb %ld after_100_kb %ld after_1000_kb %ld "
                "end_kb %ld peak_kb %ld\n",
                count + 1, secondsSince(start), cpuSeconds(RUSAGE_SELF) - own, cpuSeconds(RUSAGE_CHILDREN) - tools,
                before, [witness memoryAfter:100], [witness memoryAfter:1000], residentMemory(), peakMemory());
}

} // namespace

int main() {
    @autoreleasepool {
        [NSApplication sharedApplication];
        [NSApp finishLaunching];
        measureRun(std::atoi(setting("VANT_BENCH_OPERAND").c_str()));
    }
    return 0;
}
