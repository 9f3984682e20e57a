#import "selection/VantInstallation+InstallOrder.h"
#import "shell/VantInstallation.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <objc/runtime.h>

// Ordering and filtering of the web list, by the pane's own operations on real records, as the list grows; and the
// ratio to building that list, which any host of such a list pays first.

namespace {

using Clock = std::chrono::steady_clock;

/// Names of every place of the required order, strangers, and one of the two that are dropped.
NSArray *componentNames() {
    return @[
        @"User's Guide", @"Printer Software Uninstaller", @"Fax.pkg", @"Scan Manager.pkg", @"Docuvane", @"Pressdeck",
        @"Scan Driver", @"Print Driver", @"Statora", @"Manual.pkg"
    ];
}

/// A list in which each path stands twice.
NSMutableArray *webList(int64_t count) {
    NSArray *names = componentNames();
    NSMutableArray *list = [NSMutableArray array];
    for (int64_t i = 0; i < count; ++i) {
        NSString *path =
            [NSString stringWithFormat:@"/Volumes/Media/Packages/Component %lld.pkg", static_cast<long long>(i / 2)];
        NSString *name = [names objectAtIndex:static_cast<NSUInteger>(i) % [names count]];
        [list addObject:@{@"installerpath" : path, @"componentname" : name}];
    }
    return list;
}

/// A pane that was never started: nothing but the list that the operations work on.
VantInstallation *bareCopyOf(Class type, NSMutableArray *list) {
    VantInstallation *pane = class_createInstance(type, 0);
    object_setInstanceVariable(pane, "mInstallCompArrayForSmartUpdate", list);
    return pane;
}

double seconds(Clock::duration time) {
    return std::chrono::duration<double>(time).count();
}

void orderAndFilter(benchmark::State &state) {
    Class type = [[NSBundle bundleWithPath:@VANT_BENCH_BUNDLE] principalClass];
    double building = 0.0;
    double working = 0.0;
    for (auto _ : state) {
        @autoreleasepool {
            const auto start = Clock::now();
            NSMutableArray *list = webList(state.range(0));
            const auto built = Clock::now();
            VantInstallation *pane = bareCopyOf(type, list);
            [type sortMutableListOfComponentsToInstallAsPerRequiredOrder:list foInstallType:@"SmartUpdate"];
            [pane filteroutRedundantComponentsforSmartUpdate];
            [pane filteroutScanLegacyComponentsforSmartUpdate];
            benchmark::DoNotOptimize([pane addUninstallerPackageIfNotPresent]);
            const auto done = Clock::now();
            building += seconds(built - start);
            working += seconds(done - built);
            state.SetIterationTime(seconds(done - built));
            object_dispose(pane);
        }
    }
    state.counters["ratio_to_building"] = working / building;
    state.SetComplexityN(state.range(0));
}

} // namespace

BENCHMARK(orderAndFilter)
    ->Arg(1'000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oNLogN);

int main(int count, char **arguments) {
    @autoreleasepool {
        benchmark::Initialize(&count, arguments);
        benchmark::RunSpecifiedBenchmarks();
    }
    return 0;
}
