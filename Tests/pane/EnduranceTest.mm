#import "PaneTest.h"

#import "install/chain/VantInstallation+InstallChain.h"
#import "slides/VantInstallation+SlideRotation.h"

#include "Archives.hpp"
#include "Footprint.hpp"
#include "HttpServer.hpp"
#include "ProcessorTime.hpp"
#include <atomic>
#include <utility>

using namespace vant::test;
namespace fs = std::filesystem;

/// Counts notifications of a name, on whatever thread they are posted, and keeps none of them.
@interface VantNotificationCounter : NSObject {
@public
    std::atomic<int> count;
}
- (id)initWithName:(NSString *)name;
- (void)receive:(NSNotification *)notification;
@end

@implementation VantNotificationCounter

- (id)initWithName:(NSString *)name {
    self = [super init];
    [[NSNotificationCenter defaultCenter] addObserver:self selector:@selector(receive:) name:name object:nil];
    return self;
}

- (void)receive:(NSNotification *)notification {
    (void)notification;
    ++count;
}

@end

/// Whole runs of great length, in one process: what a package or an archive takes must be given back.
class Endurance : public PaneTest {
protected:
    Endurance() { setSuccessfulInstaller(); }

    static VantNotificationCounter *counterOf(NSString *name) {
        return [[VantNotificationCounter alloc] initWithName:name];
    }

    static Footprint footprintAfter(VantNotificationCounter *counter, int notifications) {
        EXPECT_TRUE(waitUntil([&] { return counter->count >= notifications; }, longest)) << counter->count;
        return footprint();
    }

    /// When the last package's thread and tool have ended too.
    static Footprint footprintAtTheEnd(VantNotificationCounter *complete) {
        (void)footprintAfter(complete, 1);
        (void)waitUntil([] { return footprint().children == 0 && footprint().threads <= restingThreads; });
        return footprint();
    }

    static void expectFlat(const Footprint &warm, const Footprint &end, std::size_t memoryBound) {
        std::cout << "warm: " << warm << "\nend:  " << end << "\n";
        EXPECT_LE(end.memory, warm.memory + memoryBound);
        EXPECT_LE(end.descriptors, warm.descriptors + fewDescriptors);
        EXPECT_LE(end.threads, restingThreads);
        EXPECT_EQ(end.children, 0U);
    }

    /// Files and folders in the jail and the shared temporary folder, without those of the download folder.
    static std::vector<std::string> files() {
        std::vector<std::string> paths;
        for (auto item = fs::recursive_directory_iterator(jail()); item != fs::recursive_directory_iterator(); ++item) {
            if (item->path() == temporary("Vantrel/Download"))
                item.disable_recursion_pending();
            paths.push_back(item->path());
        }
        std::sort(paths.begin(), paths.end());
        return paths;
    }

    static constexpr double longest = 300.0;
    /// The main thread and those that the platform and the server keep.
    static constexpr std::size_t restingThreads = 4;
    /// Those of the package under way when the process was looked at first.
    static constexpr std::size_t fewDescriptors = 4;
};

/// What a package costs in a list of some length, in this process.
struct PackageCost {
    double milliseconds; ///< of CPU
    double memory;       ///< KiB
};

static std::ostream &operator<<(std::ostream &out, const PackageCost &cost) {
    return out << cost.milliseconds << " ms of CPU and " << cost.memory << " KiB a package";
}

/// Whole runs with the table in a window.
class EnduranceInWindow : public Endurance {
protected:
    EnduranceInWindow()
        : window([[NSWindow alloc] initWithContentRect:NSMakeRect(50, 50, 620, 420)
                                             styleMask:NSTitledWindowMask
                                               backing:NSBackingStoreBuffered
                                                 defer:NO]),
          next(counterOf(@"InstallNextCDComponent")), complete(counterOf(@"CDInstallComplete")) {
        writeSettings(@{});
    }

    PackageCost costInListOf(int packages) {
        @autoreleasepool {
            showPane(packages);
            const double cpu = processSeconds();
            const std::size_t memory = footprint().memory;
            [pane InstallCDComponents:nil];
            EXPECT_TRUE(waitUntil([&] { return complete->count > 0; }, longest)) << next->count;
            EXPECT_EQ(next->count, packages) << "the uninstaller comes last";
            const PackageCost cost = {1e3 * (processSeconds() - cpu) / packages,
                                      (static_cast<double>(footprint().memory) - static_cast<double>(memory)) /
                                          packages};
            letPaneGo();
            return cost;
        }
    }

private:
    void showPane(int packages) {
        NSMutableArray *selection = [NSMutableArray array];
        for (int i = 0; i < packages; ++i)
            [selection addObject:entry(@"Print Driver", [NSString stringWithFormat:@"/media/Package %d.pkg", i])];
        writeMediaSelection(selection);
        processCounter("cdInstallIndex") = 0;
        next->count = complete->count = 0;
        createPane();
        [NSObject cancelPreviousPerformRequestsWithTarget:pane];
        [window setContentView:[pane contentView]];
        [window orderFront:nil];
        NSTableView *table = field<NSTableView *>(pane, "list1");
        EXPECT_TRUE(waitUntil([&] { return [table numberOfRows] == packages; }));
    }

    /// As a host turns its page; a touched slide, so that no timer holds the pane.
    void letPaneGo() {
        [pane changeImage:field<NSButton *>(pane, "nextButton")];
        [window setContentView:[[[NSView alloc] init] autorelease]];
        [std::exchange(pane, nil) release];
    }

    NSWindow *window;
    VantNotificationCounter *next;
    VantNotificationCounter *complete;
};

TEST_F(EnduranceInWindow, APackageCostsTheSameInAListOfAnyLength) {
    (void)costInListOf(100); // loads and makes what every run needs
    const PackageCost shortList = costInListOf(300);
    const PackageCost longList = costInListOf(3000);
    std::cout << "300 packages:  " << shortList << "\n3000 packages: " << longList << "\n";
    // A row that is looked at or drawn anew with every package costs some microseconds, and there are 2,700 more of
    // them.
    EXPECT_LE(longList.milliseconds, 1.6 * shortList.milliseconds);
    // Seen: 0.4 KiB, the outcome that the pane keeps among it.
    EXPECT_LE(longList.memory, 1.5);
}

TEST_F(Endurance, AThousandPackagesLeaveTheProcessAsItWas) {
    NSMutableArray *selection = [NSMutableArray array];
    for (int i = 0; i < 1000; ++i)
        [selection addObject:entry(@"Print Driver", [NSString stringWithFormat:@"/media/Package %d.pkg", i])];
    writeMediaSelection(selection);
    writeSettings(@{});
    VantNotificationCounter *const next = counterOf(@"InstallNextCDComponent");
    VantNotificationCounter *const complete = counterOf(@"CDInstallComplete");
    createPane();
    const Footprint warm = footprintAfter(next, 200);
    const auto before = files();
    const Footprint end = footprintAtTheEnd(complete);
    EXPECT_EQ(next->count, 1000) << "the uninstaller comes last";
    // Seen: 160 KiB for 800 packages, whose outcomes the pane keeps.
    expectFlat(warm, end, 512);
    EXPECT_EQ(files(), before);
}

TEST_F(Endurance, AHundredArchivesLeaveTheProcessAsItWas) {
    HttpServer server;
    NSMutableArray *selection = [NSMutableArray array];
    for (int i = 0; i < 100; ++i) {
        const std::string target = "/" + std::to_string(i) + ".zip";
        HttpReply reply;
        reply.body = zipOf({{i == 0 ? "Fax.pkg" : "read me.txt", std::string(100'000, 'x')}});
        server.serve(target, reply);
        [selection addObject:entry(@"PC fax Utility", ns(server.url(target)))];
    }
    writeWebSelection(selection);
    writeSettings(@{@"Smart Update" : @"1"});
    VantNotificationCounter *const expanded = counterOf(@"unzipcompleted");
    VantNotificationCounter *const complete = counterOf(@"SUInstallComplete");
    const Footprint idle = footprint();
    createPane();
    Footprint warm = footprintAfter(expanded, 50);
    warm.descriptors = idle.descriptors;
    const auto before = files();
    const Footprint end = footprintAtTheEnd(complete);
    EXPECT_EQ(expanded->count, 100);
    // All archives come at once, so half of them are there before memory is at its most: 100 KB for each of the others
    // would be 5 MB.
    expectFlat(warm, end, 2048);
    EXPECT_EQ(files(), before);
}
