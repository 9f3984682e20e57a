#import "BenchHost.h"
#import "install/chain/VantInstallation+InstallChain.h"
#import "install/chain/VantInstallation+UnpackChain.h"
#import "install/profiles/VantInstallation+ICCProfiles.h"
#import "shell/Notifications.h"
#import "shell/VantInstallation.h"

#include "Memory.hpp"

#include <atomic>
#include <cctype>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>

// One measured process. Benchmarks/run sets its folders and, in VANT_BENCH_MODE and VANT_BENCH_OPERAND, what it
// measures: the platform opens bare arguments as documents. Each mode prints one line of "name value" pairs.

using namespace vant::bench;

namespace fs = std::filesystem;

namespace {

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

/// A media run of `count` packages, without the delay before the first.
void measureChain(int count) {
    writeSelection(count);
    BenchObserver *observer = [[BenchObserver alloc] init];
    VantInstallation *pane = createPane(observer);
    [NSObject cancelPreviousPerformRequestsWithTarget:pane];
    const std::size_t before = openDescriptors();
    const auto start = Clock::now();
    [pane InstallCDComponents:nil];
    runUntil([&] { return observer->finished.load(); });
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

/// The reference of the creation: a host that opens the same nib and nothing else.
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

/// The search of one expanded folder. The packages found are told so that a search that finds nothing shows.
void measureSearch(NSString *folder) {
    writeSelection(0);
    BenchObserver *observer = [[BenchObserver alloc] init];
    VantInstallation *pane = createPane(observer);
    [NSObject cancelPreviousPerformRequestsWithTarget:pane];
    NSNotification *expanded = [NSNotification notificationWithName:@"unzipcompleted"
                                                             object:nil
                                                           userInfo:@{@"path" : folder, @"BDObject" : pane}];
    const auto start = Clock::now();
    @autoreleasepool {
        [pane receiveunzipNotification:expanded];
    }
    std::printf("seconds %.4f packages %lu\n", secondsSince(start),
                static_cast<unsigned long>([[pane valueForKey:@"mInstallCompArrayForSmartUpdate"] count]));
}

/// A web run of the archives at the addresses, from the pane's creation to the host being told to go on. The packages
/// that were installed are written to a file, a line each in their order.
void measureWeb(const std::string &addresses) {
    NSMutableArray *selection = [NSMutableArray array];
    std::istringstream words(addresses);
    for (std::string address; words >> address;)
        [selection addObject:component([NSString stringWithUTF8String:address.c_str()])];
    writePropertyList(@[], @"Vantrel/CD/SelectedInput.plist");
    writePropertyList(selection, @"Vantrel/SelectedInput.plist");
    writePropertyList(@{@"Smart Update" : @"1"}, @"Vantrel/VantUserSettings.plist");
    BenchObserver *observer = [[BenchObserver alloc] init];
    [[NSBundle bundleWithPath:@VANT_BENCH_BUNDLE] load];
    const auto start = Clock::now();
    VantInstallation *pane = createPane(observer);
    runUntil([&] { return observer->finished.load(); });
    NSArray *paths = [[pane valueForKey:@"mInstallCompArrayForSmartUpdate"] valueForKey:@"installerpath"];
    [[[paths componentsJoinedByString:@"\n"] stringByAppendingString:@"\n"]
        writeToFile:[NSTemporaryDirectory() stringByAppendingPathComponent:@"installed"]
         atomically:YES
           encoding:NSUTF8StringEncoding
              error:nullptr];
    const std::chrono::duration<double> taken = observer->finishedAt - start;
    std::printf("seconds %.4f packages %lu\n", taken.count(), static_cast<unsigned long>([paths count]));
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
        else if (mode == "search")
            measureSearch([NSString stringWithUTF8String:operand.c_str()]);
        else if (mode == "web")
            measureWeb(operand);
        else
            return std::fprintf(stderr, "PaneBench: no VANT_BENCH_MODE \"%s\"\n", mode.c_str()), 2;
    }
    return 0;
}
