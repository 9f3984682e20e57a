#import <Foundation/Foundation.h>
#include <Security/Authorization.h>
#import <VantLayer/PrivilegedToolExit.h>

#include "GNUstep/authorization/PrivilegedTool.hpp"
#include "Jail.hpp"

#include <csignal>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <string>
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

TEST_F(ToolExit, ProgramsThatTheLayerStartsForItselfAreNotPosted) {
    const std::string children = "/proc/self/task/" + std::to_string(getpid()) + "/children";
    const std::string before = vant::test::contentsOf(children);
    std::string last = marker();
    char *arguments[] = {last.data(), nullptr};
    ASSERT_EQ(vant::launchTool("/bin/false", arguments, nullptr), vant::ToolLaunch::started);
    // Two children that end at once share one signal, and the platform may collect the other without a word.
    const time_t limit = time(nullptr) + 10;
    while (vant::test::contentsOf(children) != before && time(nullptr) < limit)
        usleep(1000);
    EXPECT_EQ([[runShell("exit 5") objectForKey:VantPrivilegedToolExitStatusKey] intValue], 5);
    EXPECT_EQ([recorder->exits count], 1U);
}

TEST_F(ToolExit, AToolThatCannotBeExecutedIsNotPosted) {
    EXPECT_EQ(AuthorizationExecuteWithPrivileges(handle, "/no/such/tool", 0, nullptr, nullptr),
              errAuthorizationToolExecuteFailure);
    runShell("true");
}

} // namespace
