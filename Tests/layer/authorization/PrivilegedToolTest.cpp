#include <Security/Authorization.h>

#include "GNUstep/authorization/PrivilegedTool.hpp"
#include "Jail.hpp"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using vant::test::contentsOf;
using vant::test::writeFile;
using vant::test::writeProgram;

namespace {

bool waitUntil(const std::function<bool()> &condition, std::chrono::milliseconds bound = 10s) {
    const auto end = std::chrono::steady_clock::now() + bound;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(2ms);
    }
    return true;
}

std::size_t openDescriptors() {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator("/proc/self/fd"), {}));
}

/// The state letters of this process's children: Z is one that nobody has reaped.
std::string childStates() {
    std::string states;
    for (const auto &entry : fs::directory_iterator("/proc")) {
        if (std::atoi(entry.path().filename().c_str()) == 0)
            continue;
        const std::string text = contentsOf(entry.path() / "stat");
        const auto bracket = text.rfind(')');
        if (bracket != std::string::npos && std::atoi(text.c_str() + bracket + 4) == getpid())
            states += text[bracket + 2];
    }
    return states;
}

std::string readAll(FILE *stream) {
    std::string text;
    for (int byte = std::fgetc(stream); byte != EOF; byte = std::fgetc(stream))
        text += static_cast<char>(byte);
    return text;
}

std::string readLine(FILE *stream) {
    char line[4096];
    return std::fgets(line, sizeof line, stream) != nullptr ? line : "";
}

class PrivilegedTool : public testing::Test {
protected:
    PrivilegedTool() {
        setenv("VANT_AUTHORIZATION", "grant", 1);
        unsetenv("VANT_SYSTEM_ROOT");
        AuthorizationItem item{.name = "system.privilege.admin", .valueLength = 0, .value = nullptr, .flags = 0};
        const AuthorizationRights rights{.count = 1, .items = &item};
        EXPECT_EQ(AuthorizationCreate(&rights, nullptr,
                                      kAuthorizationFlagInteractionAllowed | kAuthorizationFlagExtendRights, &handle),
                  0);
    }
    ~PrivilegedTool() override {
        if (stream != nullptr)
            std::fclose(stream);
    }

    fs::path script(std::string_view name, std::string_view body) {
        return writeProgram(jail.path(name), "#!/bin/sh\n" + std::string(body));
    }
    OSStatus run(const fs::path &tool, std::vector<std::string> arguments = {}) {
        return execute(tool, arguments, &stream);
    }
    OSStatus runWithoutStream(const fs::path &tool, std::vector<std::string> arguments = {}) {
        return execute(tool, arguments, nullptr);
    }

    vant::test::Jail jail;
    AuthorizationRef handle = nullptr;
    FILE *stream = nullptr;

private:
    OSStatus execute(const fs::path &tool, std::vector<std::string> &arguments, FILE **channel) {
        std::vector<char *> list;
        list.reserve(arguments.size() + 1);
        for (std::string &argument : arguments)
            list.push_back(argument.data());
        list.push_back(nullptr);
        return AuthorizationExecuteWithPrivileges(handle, tool.c_str(), kAuthorizationFlagDefaults, list.data(),
                                                  channel);
    }
};

TEST_F(PrivilegedTool, GetsItsArgumentsAsTheyStand) {
    const auto tool = script("tool", "for a in \"$@\"; do printf '<%s>' \"$a\"; done\n");
    ASSERT_EQ(run(tool, {"-pkg", "/a b/\"$HOME\" `x`\n.pkg", "", "é", "-target", "/"}), 0);
    EXPECT_EQ(readAll(stream), "<-pkg></a b/\"$HOME\" `x`\n.pkg><><é><-target></>");
}

TEST_F(PrivilegedTool, NoArgumentListIsAnEmptyOne) {
    const auto tool = script("tool", "echo $#\n");
    ASSERT_EQ(AuthorizationExecuteWithPrivileges(handle, tool.c_str(), kAuthorizationFlagDefaults, nullptr, &stream),
              0);
    EXPECT_EQ(readAll(stream), "0\n");
}

TEST_F(PrivilegedTool, StreamIsItsInputAndItsOutput) {
    const auto tool = script("tool", "echo ready; while read line; do echo \"got $line\"; done\n");
    ASSERT_EQ(run(tool), 0);
    EXPECT_EQ(readLine(stream), "ready\n");
    for (const std::string word : {"one", "two"}) {
        std::fputs((word + "\n").c_str(), stream);
        std::fflush(stream);
        EXPECT_EQ(readLine(stream), "got " + word + "\n");
    }
}

TEST_F(PrivilegedTool, SeesTheEndOfItsInputWhenTheStreamIsClosed) {
    const auto ended = jail.path("ended");
    const auto tool = script("tool", "cat >/dev/null; touch '" + ended.string() + "'\n");
    ASSERT_EQ(run(tool), 0);
    std::fclose(stream);
    stream = nullptr;
    EXPECT_TRUE(waitUntil([&] { return fs::exists(ended); }));
}

TEST_F(PrivilegedTool, StreamEndsWithTheTool) {
    ASSERT_EQ(run(script("tool", "printf 'no line feed'\n")), 0);
    EXPECT_EQ(readAll(stream), "no line feed");
    EXPECT_TRUE(std::feof(stream));
}

TEST_F(PrivilegedTool, StreamEndsWithTheLastHolderOfTheToolsEnd) {
    const auto gate = jail.path("gate");
    ASSERT_EQ(mkfifo(gate.c_str(), 0600), 0);
    // A daemon that a package's script leaves behind keeps the tool's output open.
    ASSERT_EQ(run(script("tool", "(read go <'" + gate.string() + "'; echo late) & echo early\n")), 0);
    EXPECT_EQ(readLine(stream), "early\n");
    EXPECT_TRUE(waitUntil([] { return childStates().empty(); })) << "the tool itself has not ended";
    const int writer = open(gate.c_str(), O_WRONLY);
    EXPECT_EQ(write(writer, "\n", 1), 1);
    close(writer);
    EXPECT_EQ(readAll(stream), "late\n");
}

TEST_F(PrivilegedTool, AnotherToolDoesNotKeepTheStreamOpen) {
    FILE *longer = nullptr;
    const auto first = script("first", "read line; echo first\n");
    ASSERT_EQ(run(first), 0);
    const auto second = script("second", "cat\n");
    ASSERT_EQ(AuthorizationExecuteWithPrivileges(handle, second.c_str(), 0, nullptr, &longer), 0);
    std::fputs("go\n", stream);
    std::fflush(stream);
    EXPECT_EQ(readAll(stream), "first\n");
    std::fclose(longer);
}

TEST_F(PrivilegedTool, StreamIsNotInheritedByOtherChildren) {
    ASSERT_EQ(run(script("tool", "cat\n")), 0);
    EXPECT_NE(fcntl(fileno(stream), F_GETFD) & FD_CLOEXEC, 0);
}

TEST_F(PrivilegedTool, InputIsTheNullDeviceWithoutAStream) {
    const auto answer = jail.path("answer");
    ASSERT_EQ(runWithoutStream(script("tool", "readlink /proc/$$/fd/0 >'" + answer.string() + "'\n")), 0);
    EXPECT_TRUE(waitUntil([&] { return contentsOf(answer) == "/dev/null\n"; })) << contentsOf(answer);
}

TEST_F(PrivilegedTool, InheritsErrorsEnvironmentAndFolder) {
    setenv("VANT_LAYER_TEST", "from the host", 1);
    const fs::path before = fs::current_path();
    fs::current_path(jail.root());
    ASSERT_EQ(run(script("tool", "readlink /proc/$$/fd/2; pwd; echo $VANT_LAYER_TEST\n")), 0);
    fs::current_path(before);
    const std::string errors = fs::read_symlink("/proc/self/fd/2");
    EXPECT_EQ(readAll(stream), errors + "\n" + jail.root().string() + "\nfrom the host\n");
}

TEST_F(PrivilegedTool, InheritsOtherDescriptors) {
    const auto file = writeFile(jail.path("open file"), "inherited");
    const int descriptor = open(file.c_str(), O_RDONLY);
    ASSERT_EQ(run(script("tool", "cat <&" + std::to_string(descriptor) + "\n")), 0);
    EXPECT_EQ(readAll(stream), "inherited");
    close(descriptor);
}

TEST_F(PrivilegedTool, IsAPlainChildOfTheCaller) {
    ASSERT_EQ(run(script("tool", "echo $PPID\n")), 0);
    EXPECT_EQ(readAll(stream), std::to_string(getpid()) + "\n");
}

TEST_F(PrivilegedTool, CallReturnsWhileTheToolRuns) {
    ASSERT_EQ(run(script("tool", "read line; echo done\n")), 0);
    EXPECT_EQ(childStates().size(), 1U);
    std::fputs("go\n", stream);
    std::fflush(stream);
    EXPECT_EQ(readAll(stream), "done\n");
}

TEST_F(PrivilegedTool, ExitCodeIsNotReported) {
    ASSERT_EQ(run(script("tool", "exit 1\n")), 0);
    EXPECT_EQ(readAll(stream), "");
}

TEST_F(PrivilegedTool, CannotBeExecuted) {
    const auto unexecutable = writeFile(jail.path("no execute bit"), "#!/bin/sh\n");
    const auto garbage = writeProgram(jail.path("no program"), std::string("\0\1\2 not a program", 17));
    const auto textOnly = writeProgram(jail.path("no interpreter line"), "echo hello\n");
    const auto lostInterpreter = writeProgram(jail.path("lost"), "#!/no/such/interpreter\n");
    for (const fs::path &tool :
         {jail.path("missing"), unexecutable, garbage, textOnly, lostInterpreter, jail.root(), fs::path("")}) {
        const std::size_t before = openDescriptors();
        EXPECT_EQ(run(tool), errAuthorizationToolExecuteFailure) << tool;
        EXPECT_EQ(runWithoutStream(tool), errAuthorizationToolExecuteFailure) << tool;
        EXPECT_EQ(stream, nullptr) << tool;
        EXPECT_EQ(openDescriptors(), before) << tool;
    }
    EXPECT_TRUE(waitUntil([] { return childStates().empty(); })) << childStates();
}

TEST_F(PrivilegedTool, IsLookedForInTheSystemRootFirst) {
    const auto tool = script("plain/usr/sbin/tool", "echo as it stands\n");
    const auto root = jail.path("system");
    setenv("VANT_SYSTEM_ROOT", root.c_str(), 1);
    EXPECT_EQ(vant::toolLocation(tool), tool) << "a tool that is not in the system root is run as it stands";
    writeProgram(root.string() + tool.string(), "#!/bin/sh\necho from the system root\n");
    ASSERT_EQ(run(tool), 0);
    EXPECT_EQ(readAll(stream), "from the system root\n");
}

TEST_F(PrivilegedTool, SystemRootHoldsForAbsolutePathsAlone) {
    setenv("VANT_SYSTEM_ROOT", jail.root().c_str(), 1);
    script("tool", "true\n");
    EXPECT_EQ(vant::toolLocation("tool"), "tool");
    EXPECT_EQ(vant::toolLocation("/tool"), jail.path("tool"));
    setenv("VANT_SYSTEM_ROOT", "", 1);
    EXPECT_EQ(vant::toolLocation("/tool"), "/tool");
}

TEST_F(PrivilegedTool, ABrokenToolInTheSystemRootIsNotPassedOver) {
    const auto tool = script("tool", "true\n");
    const auto root = jail.path("system");
    writeFile(root.string() + tool.string(), "no program");
    setenv("VANT_SYSTEM_ROOT", root.c_str(), 1);
    EXPECT_EQ(run(tool), errAuthorizationToolExecuteFailure);
}

TEST_F(PrivilegedTool, AThousandLaunchesLeaveNoDescriptorAndNoUnreapedChild) {
    const std::size_t before = openDescriptors();
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(run("/bin/echo", {"line"}), 0) << i;
        ASSERT_EQ(readAll(stream), "line\n") << i;
        std::fclose(std::exchange(stream, nullptr));
    }
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_TRUE(waitUntil([] { return childStates().empty(); })) << childStates();
}

TEST_F(PrivilegedTool, ReapingLeavesTheHostsOwnChildrenAlone) {
    std::vector<pid_t> own;
    for (int i = 0; i < 50; ++i) {
        const pid_t child = fork();
        if (child == 0)
            _exit(i);
        own.push_back(child);
        ASSERT_EQ(runWithoutStream("/bin/true"), 0);
    }
    EXPECT_TRUE(waitUntil([&] { return childStates() == std::string(own.size(), 'Z'); })) << childStates();
    for (int i = 0; i < 50; ++i) {
        int status = 0;
        EXPECT_EQ(waitpid(own[static_cast<std::size_t>(i)], &status, 0), own[static_cast<std::size_t>(i)]);
        EXPECT_EQ(WEXITSTATUS(status), i);
    }
}

TEST_F(PrivilegedTool, SignalsOfTheHostStayOnTheHostsThreads) {
    static pthread_t handledOn;
    struct sigaction before = {};
    struct sigaction action = {};
    action.sa_handler = [](int) { handledOn = pthread_self(); };
    sigaction(SIGCHLD, &action, &before);
    ASSERT_EQ(runWithoutStream("/bin/true"), 0);
    EXPECT_TRUE(waitUntil([] { return childStates().empty() && handledOn == pthread_self(); }));
    sigaction(SIGCHLD, &before, nullptr);
}

} // namespace
