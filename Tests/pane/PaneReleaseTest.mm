#import "PaneTest.h"

#import "slides/VantInstallation+SlideRotation.h"

#include "Archives.hpp"
#include "HttpServer.hpp"
#include "Jail.hpp"
#include <atomic>
#include <cstdlib>
#import <Foundation/NSDebug.h>
#include <mutex>
#include <ostream>
#include <thread>
#include <utility>

using namespace vant::test;

/// Runs a test's code on the main thread, for whoever is on another.
@interface VantErrand : NSObject {
    std::function<void()> errand;
}
+ (void)runOnMainThread:(std::function<void()>)work;
@end

@implementation VantErrand

+ (void)runOnMainThread:(std::function<void()>)work {
    VantErrand *errand = [[[self alloc] init] autorelease];
    errand->errand = std::move(work);
    [errand performSelectorOnMainThread:@selector(run) withObject:nil waitUntilDone:YES];
}

- (void)run {
    errand();
}

@end

namespace {

std::atomic<int> destroyed = 0;
std::atomic<int> continued = 0;
std::function<void()> atContinue; ///< what the host does when it is told to go on, on that thread
std::function<void()> atNotification;
std::function<void()> atFirstButton; ///< when the pane first tells a button, before it asks for rights

/// Does it the first time. The threads of two packages may come here side by side.
void doOnce(std::function<void()> &work) {
    static std::mutex mutex;
    std::unique_lock lock(mutex);
    const auto taken = std::exchange(work, nullptr);
    lock.unlock();
    if (taken)
        taken();
}

using Perform = void (*)(id, SEL, SEL, id, NSTimeInterval);
Perform originalPerform = nullptr;
IMP originalDealloc = nullptr;

/// The platform's own operation, twenty times as early: the steps of a run lie seconds apart.
void performSooner(id self, SEL operation, SEL message, id argument, NSTimeInterval delay) {
    originalPerform(self, operation, message, argument, delay / 20);
}

void countDestruction(id self, SEL operation) {
    reinterpret_cast<void (*)(id, SEL)>(originalDealloc)(self, operation);
    ++destroyed;
}

IMP replace(Class type, SEL operation, IMP replacement) {
    return method_setImplementation(class_getInstanceMethod(type, operation), replacement);
}

/// A message to an object that has gone ends the process from now on. The address sanitizer sees to that by itself, and
/// sees fields that are read as well, as long as the memory is really given back.
void endAtMessagesToTheGone() {
#if !__has_feature(address_sanitizer)
    setenv("CRASH_ON_ZOMBIE", "YES", 1);
    NSZombieEnabled = YES;
#endif
}

enum class Order { PaneFirst, WindowFirst };

void PrintTo(Order order, std::ostream *out) {
    *out << (order == Order::PaneFirst ? "the pane first" : "the window first");
}

std::string orderName(const testing::TestParamInfo<Order> &info) {
    return info.param == Order::PaneFirst ? "PaneFirst" : "WindowFirst";
}

} // namespace

/// A host's observer that lives as long as somebody holds it.
@interface VantPageTurner : NSObject
@end

@implementation VantPageTurner

- (void)setIsButton1Enabled:(BOOL)enabled {
    (void)enabled;
}

- (void)setIsButton2Enabled:(BOOL)enabled {
    (void)enabled;
    doOnce(atFirstButton);
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
    if (atContinue)
        atContinue();
    ++continued;
}

- (void)hear:(NSNotification *)notification {
    (void)notification;
    doOnce(atNotification);
}

@end

/// A host that lets its page go at some moment of a run, the pane before the window with its views or after it. A
/// person has touched a slide before: no timer holds the pane.
class PaneRelease : public PaneTest, public testing::WithParamInterface<Order> {
protected:
    PaneRelease() {
        endAtMessagesToTheGone();
        originalPerform = reinterpret_cast<Perform>(replace(
            [NSObject class], @selector(performSelector:withObject:afterDelay:), reinterpret_cast<IMP>(performSooner)));
        originalDealloc = replace(paneClass(), @selector(dealloc), reinterpret_cast<IMP>(countDestruction));
        turner = [[VantPageTurner alloc] init];
        record = [[NSMutableDictionary alloc] init];
        [record setObject:turner forKey:@"Model Observer"];
        [record setObject:@"Quorvel" forKey:@"VendorName"];
        setSuccessfulInstaller();
    }

    void openMediaPage() {
        writeMediaSelection(@[ entry(@"Print Driver", @"/m/Printer Driver.pkg"), entry(@"Fax", @"/m/Fax.pkg") ]);
        writeSettings(@{});
        openPage();
    }

    /// A web selection of one archive, which the server sends piece by piece.
    void openWebPage() {
        HttpReply reply;
        reply.body = zipOf({{"Fax.pkg", std::string(20'000, 'x')}});
        reply.pieceLength = 5000;
        reply.pieceDelay = std::chrono::milliseconds(50);
        server.serve("/fax.zip", reply);
        writeWebSelection(@[ entry(@"PC fax Utility", ns(server.url("/fax.zip"))) ]);
        writeSettings(@{@"Smart Update" : @"1"});
        openPage();
    }

    void openPage() {
        @autoreleasepool {
            createPane(record);
            window = [[NSWindow alloc] initWithContentRect:NSMakeRect(50, 50, 620, 420)
                                                 styleMask:NSTitledWindowMask
                                                   backing:NSBackingStoreBuffered
                                                     defer:NO];
            [window setReleasedWhenClosed:NO];
            [window setContentView:[pane contentView]];
            [window orderFront:nil];
            next = field<NSButton *>(pane, "nextButton");
            back = field<NSButton *>(pane, "backButton");
            dots = field<NSMatrix *>(pane, "radioButton");
            table = field<NSTableView *>(pane, "list1");
            [pane changeImage:next];
        }
    }

    /// The host does this on its main thread, at the moment that a test is about. The window that goes last goes in
    /// `expectQuiet`.
    void letGo() {
        @autoreleasepool {
            if (GetParam() == Order::WindowFirst)
                closeWindow();
            [std::exchange(pane, nil) release];
        }
    }

    void letGoFromAnotherThread() {
        [VantErrand runOnMainThread:[this] { letGo(); }];
    }

    void closeWindow() {
        @autoreleasepool {
            [window setContentView:[[[NSView alloc] init] autorelease]];
            [window close];
            [std::exchange(window, nil) release];
        }
    }

    void hear(NSString *name, std::function<void()> work) {
        atNotification = std::move(work);
        [[NSNotificationCenter defaultCenter] addObserver:turner selector:@selector(hear:) name:name object:nil];
    }

    static bool hostIsToldToContinue() {
        return waitUntil([] { return continued > 0; });
    }

    /// The pane goes when its run has let go of it, and whatever reaches for it afterwards finds nothing.
    void expectGone() {
        EXPECT_TRUE(waitUntil([] { return destroyed == 1; })) << "something holds the pane for good";
        announceAsAnotherPane();
        expectQuiet();
    }

    /// The bookkeeping of the web flow names the pane as the delegate of its downloads, and holds it for good.
    void expectHeldByItsDownloads() {
        expectQuiet();
        EXPECT_EQ(destroyed, 0);
    }

    void expectQuiet() {
        touchWhatIsLeft();
        if (window != nil)
            closeWindow();
        EXPECT_FALSE(waitUntil([] { return destroyed > 1 || continued > 1; }, 0.2));
    }

    void touchWhatIsLeft() {
        if (window == nil)
            return;
        @autoreleasepool {
            [table reloadData];
            [window display];
            for (NSControl *control in @[ next, back, dots ])
                [control sendAction:[control action] to:[control target]];
        }
    }

    static void announceAsAnotherPane() {
        for (NSString *name in @[
                 @"webDownloadStartNotification", @"downloadinfoo", @"downloadcompleted", @"unzipcompleted",
                 @"InstallNextSUComponent", @"SUInstallComplete", @"InstallNextCDComponent", @"CDInstallComplete",
                 @"FindInstallFile", @"FindInstallFile3"
             ])
            [[NSNotificationCenter defaultCenter] postNotificationName:name object:nil];
    }

    /// An installer that tells that it has been started, and waits for leave to go on.
    void setWaitingInstaller() {
        setInstaller("echo 'installer:%12.500000'\n: > '" + started().string() + "'\nwhile [ ! -e '" + go().string() +
                     "' ]; do sleep 0.02; done\necho 'installer:%100.000000'\n");
    }
    static std::filesystem::path started() { return jail() / "started"; }
    static std::filesystem::path go() { return jail() / "go"; }
    static bool startedComes() {
        return waitUntil([] { return std::filesystem::exists(started()); });
    }

    HttpServer server;
    VantPageTurner *turner;
    NSMutableDictionary *record;
    NSWindow *window = nil;
    NSButton *next = nil;
    NSButton *back = nil;
    NSMatrix *dots = nil;
    NSTableView *table = nil;
};

TEST_P(PaneRelease, BeforeTheFirstPackageLetsTheRunGoOn) {
    openMediaPage();
    letGo();
    EXPECT_TRUE(hostIsToldToContinue());
    expectGone();
}

TEST_P(PaneRelease, AfterARefusedPromptIsQuiet) {
    setenv("VANT_AUTHORIZATION", "deny", 1);
    openMediaPage();
    letGo();
    expectGone();
    EXPECT_EQ(continued, 0);
}

TEST_P(PaneRelease, WhileAPackageIsInstalledLetsTheRunGoOn) {
    setWaitingInstaller();
    openMediaPage();
    ASSERT_TRUE(startedComes());
    letGo();
    writeFile(go(), "");
    EXPECT_TRUE(hostIsToldToContinue());
    expectGone();
}

TEST_P(PaneRelease, BetweenTwoPackagesLetsTheRunGoOn) {
    hear(@"InstallNextCDComponent", [this] { letGoFromAnotherThread(); });
    openMediaPage();
    EXPECT_TRUE(hostIsToldToContinue());
    expectGone();
}

TEST_P(PaneRelease, InsideContinueIsQuiet) {
    atContinue = [this] { letGoFromAnotherThread(); };
    openMediaPage();
    EXPECT_TRUE(hostIsToldToContinue());
    expectGone();
}

TEST_P(PaneRelease, InsideContinueOnItsOwnThreadIsQuiet) {
    atContinue = [this] {
        if (GetParam() == Order::WindowFirst)
            [VantErrand runOnMainThread:[this] { closeWindow(); }];
        [std::exchange(pane, nil) release];
    };
    openMediaPage();
    EXPECT_TRUE(hostIsToldToContinue());
    expectGone();
}

TEST_P(PaneRelease, RightAfterContinueIsQuiet) {
    openMediaPage();
    EXPECT_TRUE(hostIsToldToContinue());
    letGo();
    expectGone();
}

TEST_P(PaneRelease, WhileAnArchiveIsDownloadedLetsTheRunGoOn) {
    hear(@"downloadinfoo", [this] { letGo(); });
    openWebPage();
    EXPECT_TRUE(hostIsToldToContinue());
    expectHeldByItsDownloads();
}

TEST_P(PaneRelease, WhenAnArchiveHasBeenExpandedLetsTheRunGoOn) {
    hear(@"unzipcompleted", [this] { letGo(); });
    openWebPage();
    EXPECT_TRUE(hostIsToldToContinue());
    expectHeldByItsDownloads();
}

TEST_P(PaneRelease, WhileAnArchiveIsExpandedLetsTheRunGoOn) {
    // The main thread waits for the tool meanwhile, so that the host can only let go from another thread.
    writeProgram(jail() / "bin" / "ditto", "#!/bin/sh\n: > '" + started().string() + "'\nwhile [ ! -e '" +
                                               go().string() + "' ]; do sleep 0.02; done\nmkdir -p \"$3\"\n: > " +
                                               "\"$3/Fax.pkg\"\n");
    setenv("PATH", ((jail() / "bin").string() + ":" + std::getenv("PATH")).c_str(), 1);
    hear(@"downloadcompleted", [this] {
        if (GetParam() == Order::WindowFirst)
            closeWindow();
    });
    openWebPage();
    std::thread host([this] {
        while (!std::filesystem::exists(started()))
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        [std::exchange(pane, nil) release];
        writeFile(go(), "");
    });
    EXPECT_TRUE(hostIsToldToContinue());
    host.join();
    expectHeldByItsDownloads();
}

/// What a host holds before the prompt is answered: the record, no pane yet.
TEST_P(PaneRelease, OfTheRecordBeforeThePromptIsAnsweredLeavesThePaneItsOwn) {
    atFirstButton = [this] {
        [std::exchange(record, nil) release];
        [std::exchange(turner, nil) release];
    };
    openMediaPage();
    EXPECT_TRUE(hostIsToldToContinue());
    letGo();
    expectGone();
}

/// The detector itself: without it, all of these tests would pass by luck.
TEST(PaneReleaseWatch, AMessageToAnObjectThatHasGoneEndsTheProcess) {
    EXPECT_DEATH(
        {
            endAtMessagesToTheGone();
            NSMutableArray *list = [[NSMutableArray alloc] init];
            [list release];
            [list count];
        },
        "deallocated instance|AddressSanitizer");
}

INSTANTIATE_TEST_SUITE_P(Of, PaneRelease, testing::Values(Order::PaneFirst, Order::WindowFirst), orderName);
