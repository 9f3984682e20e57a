#import <Foundation/Foundation.h>
#include <Security/Authorization.h>
#import <VantLayer/PrivilegedToolExit.h>

#include "GNUstep/authorization/PrivilegedTool.hpp"
#include "Jail.hpp"

#include <csignal>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

/// Keeps what is posted, and on which thread.
@interface ToolExitRecorder : NSObject {
@public
    NSMutableArray *exits;
    NSString *marker; ///< The last argument of the tools that belong to the test.
    BOOL onMainThread;
}
- (void)toolDidExit:(NSNotification *)notification;
@end

@implementation ToolExitRecorder
- (void)toolDidExit:(NSNotification *)notification {
    NSArray *arguments = [[notification userInfo] objectForKey:VantPrivilegedToolArgumentsKey];
    if (![[arguments lastObject] isEqual:marker])
        return;
    [exits addObject:[notification userInfo]];
    onMainThread = [NSThread isMainThread];
}
@end

namespace {

class ToolExit : public testing::Test {
protected:
    ToolExit() : pool([[NSAutoreleasePool alloc] init]), recorder([[ToolExitRecorder alloc] init]) {
        recorder->exits = [[NSMutableArray alloc] init];
        recorder->marker = [[[NSProcessInfo processInfo] globallyUniqueString] copy];
        [[NSNotificationCenter defaultCenter] addObserver:recorder
                                                 selector:@selector(toolDidExit:)
                                                     name:VantPrivilegedToolDidExitNotification
                                                   object:nil];
        setenv("VANT_AUTHORIZATION", "grant", 1);
        unsetenv("VANT_SYSTEM_ROOT");
        AuthorizationItem item{.name = "system.privilege.admin", .valueLength = 0, .value = nullptr, .flags = 0};
        const AuthorizationRights rights{.count = 1, .items = &item};
        EXPECT_EQ(AuthorizationCreate(&rights, nullptr,
                                      kAuthorizationFlagInteractionAllowed | kAuthorizationFlagExtendRights, &handle),
                  0);
    }
    ~ToolExit() override {
        [[NSNotificationCenter defaultCenter] removeObserver:recorder];
        [recorder->exits release];
        [recorder->marker release];
        [recorder release];
        [pool release];
    }

    /// Runs a shell command as a privileged tool and waits for so many ends in all.
    NSDictionary *runShell(const char *command, NSUInteger ends = 1) {
        std::string text = command;
        std::string option = "-c";
        std::string last = marker();
        char *arguments[] = {option.data(), text.data(), last.data(), nullptr};
        EXPECT_EQ(AuthorizationExecuteWithPrivileges(handle, "/bin/sh", 0, arguments, nullptr), 0);
        return waitFor(ends);
    }
    /// Starts a tool that ends with status 1, at once or as soon as the other end of its gate is closed.
    void startFailing(int gate) {
        std::string text = gate < 0 ? "exit 1" : "read go <&" + std::to_string(gate);
        std::string option = "-c";
        std::string last = marker();
        char *arguments[] = {option.data(), text.data(), last.data(), nullptr};
        EXPECT_EQ(AuthorizationExecuteWithPrivileges(handle, "/bin/sh", 0, arguments, nullptr), 0);
    }
    /// Starts a task of the platform's that ends as soon as the other end of its gate is closed.
    static NSTask *taskAt(int gate) {
        NSTask *task = [[[NSTask alloc] init] autorelease];
        [task setLaunchPath:@"/bin/cat"];
        [task setStandardInput:[[[NSFileHandle alloc] initWithFileDescriptor:gate] autorelease]];
        [task launch];
        return task;
    }
    /// Has a task and four tools end at one moment, two of them just started. The number of statuses that are told.
    int statusesOfRound() {
        [recorder->exits removeAllObjects];
        int gate[2];
        EXPECT_EQ(pipe2(gate, O_CLOEXEC), 0);
        const int inherited = fcntl(gate[0], F_DUPFD, 0);
        NSTask *task = taskAt(gate[0]);
        startFailing(inherited);
        startFailing(inherited);
        close(gate[1]);
        startFailing(-1);
        startFailing(-1);
        waitFor(4);
        const time_t limit = time(nullptr) + 20;
        while ([task isRunning] && time(nullptr) < limit)
            [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode
                                     beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.005]];
        EXPECT_FALSE([task isRunning]);
        EXPECT_EQ([task terminationStatus], 0);
        close(gate[0]);
        close(inherited);
        int told = 0;
        for (NSDictionary *exit in recorder->exits)
            told += [[exit objectForKey:VantPrivilegedToolExitStatusKey] intValue];
        return told;
    }
    int statusesOfRounds(int rounds) {
        int told = 0;
        for (int round = 0; round < rounds && !HasFatalFailure(); ++round) {
            @autoreleasepool {
                told += statusesOfRound();
            }
        }
        return told;
    }
    [[nodiscard]] std::string marker() const { return [recorder->marker UTF8String]; }
    NSDictionary *waitFor(NSUInteger ends) {
        NSDate *limit = [NSDate dateWithTimeIntervalSinceNow:20];
        while ([recorder->exits count]<ends && [limit timeIntervalSinceNow]> 0)
            [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode
                                     beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.05]];
        EXPECT_EQ([recorder->exits count], ends);
        return [recorder->exits lastObject];
    }

    NSAutoreleasePool *pool;
    ToolExitRecorder *recorder;
    AuthorizationRef handle = nullptr;
};

using EnduranceOfToolExit = ToolExit;

TEST_F(ToolExit, ExitStatusIsPostedOnTheMainThread) {
    NSDictionary *exit = runShell("exit 3");
    EXPECT_EQ([[exit objectForKey:VantPrivilegedToolExitStatusKey] intValue], 3);
    EXPECT_EQ([exit objectForKey:VantPrivilegedToolSignalKey], nil);
    EXPECT_GT([[exit objectForKey:VantPrivilegedToolProcessIdentifierKey] intValue], 1);
    EXPECT_TRUE(recorder->onMainThread);
}

TEST_F(ToolExit, SuccessIsPostedToo) {
    EXPECT_EQ([[runShell("true") objectForKey:VantPrivilegedToolExitStatusKey] intValue], 0);
    EXPECT_NE([[recorder->exits lastObject] objectForKey:VantPrivilegedToolExitStatusKey], nil);
}

TEST_F(ToolExit, SignalThatEndedTheToolIsPosted) {
    NSDictionary *exit = runShell("kill -TERM $$");
    EXPECT_EQ([[exit objectForKey:VantPrivilegedToolSignalKey] intValue], SIGTERM);
    EXPECT_EQ([exit objectForKey:VantPrivilegedToolExitStatusKey], nil);
}

TEST_F(ToolExit, PathAndArgumentsArePostedAsTheCallerGaveThem) {
    const vant::test::Jail jail;
    vant::test::writeProgram(jail.path("opt/tool"), "#!/bin/sh\nexit 7\n");
    setenv("VANT_SYSTEM_ROOT", jail.root().c_str(), 1);
    std::vector<std::string> texts = {"-pkg", "/a b/é.pkg", "\xff", "", marker()};
    char *arguments[] = {texts[0].data(), texts[1].data(), texts[2].data(), texts[3].data(), texts[4].data(), nullptr};
    ASSERT_EQ(AuthorizationExecuteWithPrivileges(handle, "/opt/tool", 0, arguments, nullptr), 0);
    NSDictionary *exit = waitFor(1);
    EXPECT_TRUE([[exit objectForKey:VantPrivilegedToolPathKey] isEqual:@"/opt/tool"]);
    NSArray *expected = [NSArray arrayWithObjects:@"-pkg", @"/a b/é.pkg", @"ÿ", @"", recorder->marker, nil];
    EXPECT_TRUE([[exit objectForKey:VantPrivilegedToolArgumentsKey] isEqual:expected]);
    EXPECT_EQ([[exit objectForKey:VantPrivilegedToolExitStatusKey] intValue], 7);
}

TEST_F(ToolExit, EveryToolIsPostedOnce) {
    std::string last = marker();
    char *arguments[] = {last.data(), nullptr};
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(AuthorizationExecuteWithPrivileges(handle, "/bin/true", 0, arguments, nullptr), 0);
    waitFor(20);
    NSMutableSet *processes = [NSMutableSet set];
    for (NSDictionary *exit in recorder->exits)
        [processes addObject:[exit objectForKey:VantPrivilegedToolProcessIdentifierKey]];
    EXPECT_EQ([processes count], 20U);
}

TEST_F(ToolExit, StatusesOfToolsThatEndAtOnceAreToldToo) {
    EXPECT_EQ(statusesOfRounds(30), 120);
}

TEST_F(EnduranceOfToolExit, NoneOfFourThousandStatusesIsLost) {
    EXPECT_EQ(statusesOfRounds(1000), 4000);
}

TEST_F(ToolExit, ProgramsThatTheLayerStartsForItselfAreNotPosted) {
    std::string last = marker();
    char *arguments[] = {last.data(), nullptr};
    ASSERT_EQ(vant::launchTool("/bin/false", arguments, nullptr), vant::ToolLaunch::started);
    EXPECT_EQ([[runShell("exit 5") objectForKey:VantPrivilegedToolExitStatusKey] intValue], 5);
    EXPECT_EQ([recorder->exits count], 1U);
}

TEST_F(ToolExit, AToolThatCannotBeExecutedIsNotPosted) {
    EXPECT_EQ(AuthorizationExecuteWithPrivileges(handle, "/no/such/tool", 0, nullptr, nullptr),
              errAuthorizationToolExecuteFailure);
    runShell("true");
}

} // namespace
