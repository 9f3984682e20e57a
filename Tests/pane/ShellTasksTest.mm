#import "install/tasks/VantInstallation+ShellTasks.h"

#include "Jail.hpp"
#import "PaneTest.h"

#include <cstdio>
#include <cstdlib>
#include <sys/wait.h>

using namespace vant::test;
namespace fs = std::filesystem;

/// Counts what the run loop brings it.
@interface VantTickCounter : NSObject {
@public
    int ticks;
}
@end

@implementation VantTickCounter
- (void)tick:(id)sender {
    (void)sender;
    ++ticks;
}
@end

/// Runs a command on the thread that it is called on, within a pool, as an installer thread does.
@interface VantCommandRunner : NSObject {
    VantInstallation *pane;
}
- (id)initWithPane:(VantInstallation *)aPane;
@end

@implementation VantCommandRunner
- (id)initWithPane:(VantInstallation *)aPane {
    self = [super init];
    pane = aPane;
    return self;
}

- (void)runCommand:(NSString *)command {
    @autoreleasepool {
        [pane taskForShellCommand:command];
    }
}
@end

class ShellTasks : public PaneTest {
protected:
    ShellTasks() {
        createIdlePane();
        fs::create_directories(folder);
    }

    void run(const std::string &command) { [pane taskForShellCommand:ns(command)]; }

    /// A stand-in for the expander that writes down its arguments, one a line.
    void recordExpansions(const char *ending = "") {
        writeProgram(folder / "bin/ditto", "#!/bin/sh\nfor a in \"$@\"; do printf '%s\\n' \"$a\" >> '" +
                                               (folder / "arguments").string() + "'; done\n" + ending);
        setenv("PATH", ((folder / "bin").string() + ":" + std::getenv("PATH")).c_str(), 1);
    }
    /// Descriptors of this process that the null device is open on.
    static std::size_t nullDevices() {
        std::size_t count = 0;
        std::error_code error;
        for (const auto &entry : fs::directory_iterator("/proc/self/fd"))
            count += fs::read_symlink(entry.path(), error) == "/dev/null" ? 1 : 0;
        return count;
    }
    std::string arguments() { return contentsOf(folder / "arguments"); }

    const fs::path folder = jail() / "scratch";
    const std::string out = (folder / "out").string();
};

TEST_F(ShellTasks, ACommandHasEndedWhenTheCallReturns) {
    run("sleep 0.3; echo done > " + out);
    EXPECT_EQ(contentsOf(out), "done\n");
}

TEST_F(ShellTasks, CommandsReadTheNullDevice) {
    // The process's own input is another.
    ASSERT_NE(std::freopen(writeFile(folder / "in", "text").c_str(), "r", stdin), nullptr);
    run("readlink /proc/self/fd/0 > " + out);
    EXPECT_EQ(contentsOf(out), "/dev/null\n");
}

TEST_F(ShellTasks, TheShellIsGivenExactlyTheCommand) {
    run("tr '\\0' ' ' < /proc/$$/cmdline > " + out + "; echo $# >> " + out);
    EXPECT_EQ(contentsOf(out), "/bin/sh -c tr '\\0' ' ' < /proc/$$/cmdline > " + out + "; echo $# >> " + out + " 0\n");
}

TEST_F(ShellTasks, AFailedCommandIsNotNoticed) {
    for (const char *command : {"exit 7", "kill -9 $$", "no-such-program-here", ")", ""})
        EXPECT_NO_THROW(run(command)) << command;
}

TEST_F(ShellTasks, ALaunchThatFailsIsTheCallersToKnow) {
    struct Launcher {
        static void fail(id, SEL) { [NSException raise:NSInvalidArgumentException format:@"no process"]; }
    };
    method_setImplementation(class_getInstanceMethod([[[[NSTask alloc] init] autorelease] class], @selector(launch)),
                             reinterpret_cast<IMP>(&Launcher::fail));
    NSString *raised = nil;
    @try {
        run("true");
    } @catch (NSException *exception) {
        raised = [exception reason];
    }
    EXPECT_EQ(text(raised), "no process");
}

TEST_F(ShellTasks, TheRunLoopStandsStillDuringACommand) {
    auto *counter = [[VantTickCounter alloc] init];
    [counter performSelector:@selector(tick:) withObject:nil afterDelay:0.0];
    run("sleep 0.3");
    EXPECT_EQ(counter->ticks, 0);
    EXPECT_TRUE(waitUntil([&] { return counter->ticks == 1; }));
}

TEST_F(ShellTasks, ManyCommandsLeaveNoChildAndNoDescriptor) {
    run("true");
    const std::size_t before = openDescriptors();
    for (int i = 0; i < 50; ++i)
        @autoreleasepool {
            run("true");
        }
    EXPECT_LE(openDescriptors(), before);
    siginfo_t child{};
    EXPECT_EQ(waitid(P_ALL, 0, &child, WEXITED | WNOHANG | WNOWAIT), -1) << "process " << child.si_pid;
}

TEST_F(ShellTasks, CommandsOnOtherThreadsKeepNoInputOpen) {
    const std::size_t before = nullDevices();
    for (std::size_t i = 1; i <= 20; ++i) {
        auto *runner = [[VantCommandRunner alloc] initWithPane:pane];
        [NSThread detachNewThreadSelector:@selector(runCommand:) toTarget:runner withObject:ns("echo >> " + out)];
        ASSERT_TRUE(waitUntil([&] { return contentsOf(out).size() == i; }));
    }
    EXPECT_TRUE(waitUntil([&] { return nullDevices() == before; })) << nullDevices() << " after " << before;
}

TEST_F(ShellTasks, ZipAndOtherArchivesHaveTheirForms) {
    recordExpansions();
    [pane unzip:@"/a/b.zip" ExtractPath:@"/a/b"];
    EXPECT_EQ(arguments(), "-xk\n/a/b.zip\n/a/b\n");
    [pane ungz:@"/a/c.gz" ExtractPath:@"/a/c"];
    EXPECT_EQ(arguments(), "-xk\n/a/b.zip\n/a/b\n-x\n/a/c.gz\n/a/c\n");
}

TEST_F(ShellTasks, PathsWithBlanksArriveWhole) {
    recordExpansions();
    [pane unzip:@"/a  b/my 'archive' (1).zip" ExtractPath:@"/out put"];
    EXPECT_EQ(arguments(), "-xk\n/a  b/my 'archive' (1).zip\n/out put\n");
}

TEST_F(ShellTasks, TheShellInterpretsWhatStandsInAPath) {
    recordExpansions();
    setenv("VANT_TEST_WORD", "expanded", 1);
    [pane unzip:@"/$VANT_TEST_WORD/`echo run`.zip" ExtractPath:@"/b\\\\c"];
    EXPECT_EQ(arguments(), "-xk\n/expanded/run.zip\n/b\\c\n");
}

TEST_F(ShellTasks, AnAbsentPathIsAnEmptyOne) {
    recordExpansions();
    [pane unzip:nil ExtractPath:nil];
    EXPECT_EQ(arguments(), "-xk\n\n\n");
}

TEST_F(ShellTasks, AFailedExpansionIsNotNoticed) {
    recordExpansions("exit 1\n");
    EXPECT_NO_THROW([pane ungz:@"/missing.gz" ExtractPath:@"/nowhere"]);
    EXPECT_EQ(arguments(), "-x\n/missing.gz\n/nowhere\n");
}

TEST_F(ShellTasks, TheEmptyHandlerHasNoEffect) {
    [pane someTaskHasTerminated:nil];
    [pane someTaskHasTerminated:[NSNotification notificationWithName:@"any" object:pane]];
    EXPECT_EQ([[observer calls] count], 0U);
    EXPECT_FALSE(fs::exists(traceLog()));
}
