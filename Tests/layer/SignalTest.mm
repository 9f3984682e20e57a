#include <dispatch/dispatch.h>
#import <Foundation/Foundation.h>
#include <Security/Authorization.h>
#import <VantLayer/PrivilegedToolExit.h>

#include "GNUstep/files/SubpathWalk.hpp"
#include "Jail.hpp"
#include "SignalStorm.hpp"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <unistd.h>

// What the layer waits for and reads must survive a host whose signal handlers interrupt system calls.

/// Counts the ends of privileged tools by their exit status.
@interface ExitCounter : NSObject {
@public
    int succeeded;
}
- (void)toolDidExit:(NSNotification *)notification;
@end

@implementation ExitCounter
- (void)toolDidExit:(NSNotification *)notification {
    if ([[[notification userInfo] objectForKey:VantPrivilegedToolExitStatusKey] intValue] == 6)
        succeeded++;
}
@end

namespace vant::test {
namespace {

bool runLoopUntil(const std::function<bool()> &condition) {
    NSDate *limit = [NSDate dateWithTimeIntervalSinceNow:30];
    while (!condition() && [limit timeIntervalSinceNow] > 0) {
        @autoreleasepool {
            [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode
                                     beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.05]];
        }
    }
    return condition();
}

/// All that a descriptor gives, whatever interrupts the reading.
std::string readAll(int descriptor) {
    std::string text;
    char piece[512];
    for (;;) {
        const auto count = ::read(descriptor, piece, sizeof piece);
        if (count > 0)
            text.append(piece, static_cast<std::size_t>(count));
        else if (count == 0 || errno != EINTR)
            return text;
    }
}

} // namespace

TEST(Signals, LoseNoToolOutputAndNoExitStatus) {
    @autoreleasepool {
        ExitCounter *counter = [[[ExitCounter alloc] init] autorelease];
        [[NSNotificationCenter defaultCenter] addObserver:counter
                                                 selector:@selector(toolDidExit:)
                                                     name:VantPrivilegedToolDidExitNotification
                                                   object:nil];
        setenv("VANT_AUTHORIZATION", "grant", 1);
        AuthorizationItem item{.name = "system.privilege.admin", .valueLength = 0, .value = nullptr, .flags = 0};
        const AuthorizationRights rights{.count = 1, .items = &item};
        AuthorizationRef handle = nullptr;
        ASSERT_EQ(AuthorizationCreate(&rights, nullptr,
                                      kAuthorizationFlagInteractionAllowed | kAuthorizationFlagExtendRights, &handle),
                  0);
        const SignalStorm storm;
        std::string option = "-c";
        std::string command = "for i in 1 2 3 4 5; do echo line $i; sleep 0.02; done; exit 6";
        char *arguments[] = {option.data(), command.data(), nullptr};
        for (int i = 0; i < 5; ++i) {
            FILE *stream = nullptr;
            ASSERT_EQ(AuthorizationExecuteWithPrivileges(handle, "/bin/sh", 0, arguments, &stream), 0);
            EXPECT_EQ(readAll(fileno(stream)), "line 1\nline 2\nline 3\nline 4\nline 5\n");
            std::fclose(stream);
        }
        EXPECT_TRUE(runLoopUntil([&] { return counter->succeeded == 5; })) << counter->succeeded;
        [[NSNotificationCenter defaultCenter] removeObserver:counter];
        AuthorizationFree(handle, 0);
    }
}

TEST(Signals, LoseNothingOfTheMainQueue) {
    static std::atomic<int> done = 0;
    done = 0;
    constexpr int count = 20'000;
    const SignalStorm storm;
    std::thread producer([] {
        for (int i = 0; i < count; ++i)
            dispatch_async_f(dispatch_get_main_queue(), nullptr, [](void *) { ++done; });
    });
    EXPECT_TRUE(runLoopUntil([] { return done == count; })) << done;
    producer.join();
}

TEST(Signals, LoseNothingOfAFolder) {
    const Jail jail;
    for (int i = 0; i < 3000; ++i)
        writeFile(jail.path("tree/" + std::to_string(i % 50) + "/" + std::to_string(i)), "");
    const SignalStorm storm;
    for (int round = 0; round < 10; ++round) {
        int items = 0;
        walkSubpaths(jail.path("tree"), [&](std::string_view) { return ++items > 0; });
        EXPECT_EQ(items, 3050);
    }
}

} // namespace vant::test
