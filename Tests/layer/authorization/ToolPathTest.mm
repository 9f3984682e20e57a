#import <Foundation/Foundation.h>

#include "GNUstep/authorization/ToolPath.hpp"
#include "Jail.hpp"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace fs = std::filesystem;

namespace {

/// Runs a shell command as the pane does, without an environment of its own. Returns its output.
std::string shell(const std::string &command, NSDictionary *environment = nil) {
    NSTask *task = [[[NSTask alloc] init] autorelease];
    NSPipe *output = [NSPipe pipe];
    [task setLaunchPath:@"/bin/sh"];
    [task setArguments:[NSArray arrayWithObjects:@"-c", [NSString stringWithUTF8String:command.c_str()], nil]];
    [task setStandardInput:[NSFileHandle fileHandleWithNullDevice]];
    [task setStandardOutput:output];
    if (environment != nil)
        [task setEnvironment:environment];
    [task launch];
    NSData *data = [[output fileHandleForReading] readDataToEndOfFile];
    [task waitUntilExit];
    return {static_cast<const char *>([data bytes]), [data length]};
}

TEST(ToolPath, CarriedToolsLieBesideTheLoadedCode) {
    EXPECT_EQ(vant::carriedTools(), fs::canonical("/proc/self/exe").parent_path() / "Resources/tools");
}

TEST(ToolPath, LoadingTheLayerPutsTheCarriedToolsLastInPath) {
    const char *const value = std::getenv("PATH");
    ASSERT_NE(value, nullptr);
    const std::string path = value;
    EXPECT_TRUE(path.ends_with(':' + vant::carriedTools())) << path;
}

TEST(ToolPath, AFolderIsAddedOnce) {
    setenv("PATH", "/usr/bin:/bin", 1);
    vant::appendToPath("/opt/tools");
    vant::appendToPath("/opt/tools");
    vant::appendToPath("/opt/tool");
    EXPECT_STREQ(std::getenv("PATH"), "/usr/bin:/bin:/opt/tools:/opt/tool");
}

TEST(ToolPath, WithoutAPathTheSystemsToolsStayFindable) {
    unsetenv("PATH");
    vant::appendToPath("/opt/tools");
    EXPECT_EQ(shell("command -v cat && echo $PATH"), "/usr/bin/cat\n/usr/local/bin:/usr/bin:/bin:/opt/tools\n");
}

TEST(ToolPath, ATaskFindsACarriedTool) {
    const vant::test::Jail jail;
    vant::test::writeProgram(jail.path("tools/vant-carried"), "#!/bin/sh\necho carried \"$@\"\n");
    vant::appendToPath(jail.path("tools"));
    EXPECT_EQ(shell("vant-carried -x \"a b\""), "carried -x a b\n");
}

TEST(ToolPath, AToolOfTheSystemIsPreferred) {
    const vant::test::Jail jail;
    vant::test::writeProgram(jail.path("tools/cat"), "#!/bin/sh\necho carried\n");
    vant::appendToPath(jail.path("tools"));
    EXPECT_EQ(shell("echo system | cat"), "system\n");
}

TEST(ToolPath, ATaskInheritsTheEnvironmentAsItIsAtItsLaunch) {
    [[NSProcessInfo processInfo] environment];
    setenv("VANT_LAYER_TEST", "changed = é", 1);
    EXPECT_EQ(shell("echo $VANT_LAYER_TEST"), "changed = é\n");
    unsetenv("VANT_LAYER_TEST");
    EXPECT_EQ(shell("echo [$VANT_LAYER_TEST]"), "[]\n");
}

TEST(ToolPath, ATaskKeepsTheEnvironmentThatItWasGiven) {
    setenv("VANT_LAYER_TEST", "of the process", 1);
    NSDictionary *own = [NSDictionary dictionaryWithObject:@"its own" forKey:@"VANT_OTHER"];
    EXPECT_EQ(shell("echo [$VANT_LAYER_TEST] $VANT_OTHER", own), "[] its own\n");
}

} // namespace
