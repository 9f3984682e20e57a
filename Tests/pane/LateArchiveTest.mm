#import "install/chain/VantInstallation+InstallChain.h"
#import "selection/VantInstallation+InstallOrder.h"
#import "WebTest.h"

#include "Jail.hpp"
#include <atomic>
#include <chrono>
#include <thread>
#include <utility>

using namespace vant::test;

/// A list whose accesses lie in the test's own code, where the thread sanitizer sees them. It can hold an installer
/// thread in the middle of reading it until the main thread is about to change it, and knows when a change came in
/// between. Its flags order nothing, so that they hide no race.
@interface VantMeetingList : NSMutableArray {
@public
    std::vector<id> records;
    std::atomic<SEL> heldOperation;
    std::atomic<bool> held;
    std::atomic<bool> arriving;
    std::atomic<bool> torn;
}
/// The next reading by this operation on another than the main thread is held.
- (void)holdNext:(SEL)operation;
@end

@implementation VantMeetingList

- (void)dealloc {
    [self removeAllObjects];
    [super dealloc];
}

- (void)holdNext:(SEL)operation {
    arriving.store(false, std::memory_order_relaxed);
    heldOperation.store(operation, std::memory_order_relaxed);
}

- (void)read:(SEL)operation {
    SEL wanted = heldOperation.load(std::memory_order_relaxed);
    if ([NSThread isMainThread] || wanted == nullptr || !sel_isEqual(operation, wanted))
        return;
    heldOperation.store(nullptr, std::memory_order_relaxed);
    held.store(true, std::memory_order_relaxed);
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!arriving.load(std::memory_order_relaxed) && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    // What is on its way has this long to come in between, if nothing stops it.
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    held.store(false, std::memory_order_relaxed);
}

- (void)change {
    if (held.load(std::memory_order_relaxed))
        torn.store(true, std::memory_order_relaxed);
}

- (NSUInteger)count {
    [self read:_cmd];
    return records.size();
}

- (id)objectAtIndex:(NSUInteger)index {
    [self read:_cmd];
    if (index >= records.size())
        [NSException raise:NSRangeException format:@"no record at %lu", static_cast<unsigned long>(index)];
    return records[index];
}

- (void)addObject:(id)object {
    [self change];
    records.push_back([object retain]);
}

- (void)insertObject:(id)object atIndex:(NSUInteger)index {
    [self change];
    records.insert(records.begin() + static_cast<std::ptrdiff_t>(index), [object retain]);
}

- (void)replaceObjectAtIndex:(NSUInteger)index withObject:(id)object {
    [self change];
    [std::exchange(records[index], [object retain]) release];
}

- (void)removeObjectAtIndex:(NSUInteger)index {
    [self change];
    [records[index] release];
    records.erase(records.begin() + static_cast<std::ptrdiff_t>(index));
}

- (void)removeLastObject {
    [self removeObjectAtIndex:records.size() - 1];
}

- (void)setArray:(NSArray *)others {
    [self change];
    std::vector<id> now;
    for (id object in others)
        now.push_back([object retain]);
    for (id object : std::exchange(records, now))
        [object release];
}

@end

/// The network has been given up and what is there is being installed; then an archive arrives after all.
class LateArchive : public WebTest {
protected:
    LateArchive() {
        list = [[VantMeetingList alloc] init];
        field<id>(pane, "mInstallCompArrayForSmartUpdate") = webList = list;
        // More archives than will come, so that none of them ends the downloads.
        select(10);
        addWeb(@"Fax.pkg", @"/web/Fax.pkg");
        addWeb(@"Hueforge.pkg", @"/web/Hueforge.pkg");
        addWeb(@"Printer Software Uninstaller", @"/web/Uninstaller.pkg");
    }

    /// Makes a change on the main thread while the run's installer thread reads the list by the operation.
    void meet(SEL reading, const std::function<void()> &change) {
        ASSERT_TRUE(waitUntil([this] { return list->held.load(std::memory_order_relaxed); })) << sel_getName(reading);
        list->arriving.store(true, std::memory_order_relaxed);
        change();
        EXPECT_FALSE(list->held) << "the change did not wait";
        EXPECT_FALSE(list->torn) << "the list was changed while it was being read";
    }

    /// Starts the run, whose next reading by the operation the archive meets, and waits for its end. The packages
    /// behind the first end when the archive is in the list: it waits its turn, and the run could be over before.
    /// Their progress moves no bar: an update of it would have the main thread count while it is to wait.
    void meetArchive(SEL reading) {
        const std::string first = (scratch / "first").string();
        const std::string listed = (scratch / "listed").string();
        setInstaller("echo 'installer:%0.000000'\n[ -e '" + first + "' ] || { : > '" + first +
                     "'; exit; }\nwhile [ ! -e '" + listed + "' ]; do sleep 0.02; done\n");
        [list holdNext:reading];
        [pane InstallWebComponents:nil];
        meet(reading, [this] { postExpanded(expandedFolder("late", {"Scanmate.pkg"})); });
        writeFile(listed, "");
        ASSERT_TRUE(waitUntil([this] { return [log countOf:@"SUInstallComplete"] > 0; }));
        EXPECT_EQ(outcome(@"Scanmate.pkg"), "PIPE END");
        EXPECT_EQ([outcomes count], 4U);
    }

    VantMeetingList *list;
};

TEST_F(LateArchive, MeetsACountOfTheListAndIsInstalled) {
    meetArchive(@selector(count));
}

TEST_F(LateArchive, MeetsALookUpInTheListAndIsInstalled) {
    meetArchive(@selector(objectAtIndex:));
}

TEST_F(LateArchive, EndsTheDownloadsWhoseListIsOrderedAndFilteredWhileNobodyReadsIt) {
    setInstaller("while [ ! -e '" + (scratch / "done").string() +
                 "' ]; do echo 'installer:%0.000000'; sleep 0.02; done\n");
    [list holdNext:@selector(count)];
    [pane InstallWebComponents:nil];
    meet(@selector(count), [this] {
        [paneClass() sortMutableListOfComponentsToInstallAsPerRequiredOrder:list foInstallType:@"SmartUpdate"];
    });
    [list holdNext:@selector(count)];
    meet(@selector(count), [this] { [pane filteroutRedundantComponentsforSmartUpdate]; });
    [list holdNext:@selector(count)];
    meet(@selector(count), [this] { [pane filteroutScanLegacyComponentsforSmartUpdate]; });
    writeFile(scratch / "done", "");
    EXPECT_TRUE(waitUntil([this] { return [log countOf:@"SUInstallComplete"] > 0; }));
}
