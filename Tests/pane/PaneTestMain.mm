#import <AppKit/AppKit.h>

#include "Jail.hpp"
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <iostream>
#include <sstream>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

// Each process of these tests lives in a jail: its own home folder, temporary folder, media and host application. What
// decides these folders is read when a process starts, so the program makes the jail, then runs a copy of itself there.

namespace fs = std::filesystem;
using vant::test::Jail;
using vant::test::writeFile;

namespace {

bool listsTests(int count, char **arguments) {
    for (int i = 1; i < count; ++i) {
        if (std::strncmp(arguments[i], "--gtest_list_tests", 18) == 0)
            return true;
    }
    return false;
}

void setVariable(const char *name, const std::string &value) {
    setenv(name, value.c_str(), 1);
}

/// The host application that the tests run as: a copy of this program with the resources that a host has.
fs::path makeHost(const Jail &jail) {
    const fs::path host = jail.path("media/TestHost.app");
    fs::create_directories(host / "Resources" / "English.lproj");
    writeFile(host / "Resources" / "Info-gnustep.plist",
              "{ NSExecutable = TestHost; NSPrincipalClass = NSApplication; }\n");
    writeFile(host / "Resources" / "Uninstaller.pkg", "a package of the host");
    writeFile(host / "Resources" / "Manual.pkg", "a package of the host");
    writeFile(host / "Resources" / "English.lproj" / "Localizable-Inst.strings",
              "\"WebInstallTitle\" = \"Installing Software\";\n");
    // Empty, but there: a bundle remembers which files it has, so a table made later would never be found.
    writeFile(host / "Resources" / "English.lproj" / "Localizable.strings", "");
    fs::copy_file("/proc/self/exe", host / "TestHost");
    return host / "TestHost";
}

void makeFolders(const Jail &jail) {
    for (const char *folder : {"home/Library/Logs", "home/Desktop", "tmp", "root", "system/usr/sbin"})
        fs::create_directories(jail.path(folder));
    fs::permissions(jail.path("tmp"), fs::perms::owner_all);
    const std::string user = std::to_string(getuid());
    const std::string group = std::to_string(getgid());
    writeFile(jail.path("passwd"),
              "tester:x:" + user + ":" + group + ":Tester:" + jail.path("home").string() + ":/bin/sh\n");
    writeFile(jail.path("group"), "tester:x:" + group + ":\n");
}

void setEnvironment(const Jail &jail) {
    setVariable("VANT_TEST_JAIL", jail.root().string());
    setVariable("HOME", jail.path("home").string());
    setVariable("TEMP", jail.path("tmp").string());
    setVariable("TMPDIR", jail.path("tmp").string());
    setVariable("VANT_SYSTEM_ROOT", jail.path("system").string());
    setVariable("VANT_INSTALL_ROOT", jail.path("root").string());
    setVariable("VANT_AUTHORIZATION", "grant");
    setVariable("NSS_WRAPPER_PASSWD", jail.path("passwd").string());
    setVariable("NSS_WRAPPER_GROUP", jail.path("group").string());
    // The sanitizer's runtime must come before anything else that is preloaded, and bears no library bound on its own.
    setVariable("NSS_WRAPPER_DISABLE_DEEPBIND", "1");
    constexpr const char *sanitizer = VANT_SANITIZER_RUNTIME;
    setVariable("LD_PRELOAD", *sanitizer == '\0' ? "libnss_wrapper.so" : std::string(sanitizer) + ":libnss_wrapper.so");
}

/// Ends what the test process has left running: the platform starts a daemon for each home folder, and a test may leave
/// an installer behind. This process adopts them all.
void endLeftovers() {
    const std::string self = std::to_string(getpid());
    const std::string children = vant::test::contentsOf("/proc/self/task/" + self + "/children");
    std::istringstream ids(children);
    for (pid_t child = 0; ids >> child;) {
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
    }
}

int runJailed(char **arguments) {
    const Jail jail;
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    makeFolders(jail);
    const std::string host = makeHost(jail).string();
    setEnvironment(jail);
    const pid_t child = fork();
    if (child == 0) {
        std::string name = host;
        arguments[0] = name.data();
        execv(host.c_str(), arguments);
        _exit(127);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    endLeftovers();
    if (WIFSIGNALED(status))
        std::cerr << "the test process was ended by signal " << WTERMSIG(status) << "\n";
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace

int main(int count, char **arguments) {
    if (std::getenv("VANT_TEST_JAIL") == nullptr && !listsTests(count, arguments))
        return runJailed(arguments);
    testing::InitGoogleTest(&count, arguments);
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    // Death tests start the program anew: a process with threads and an X connection cannot simply be forked.
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    @autoreleasepool {
        // Without the icon window that the platform gives an application elsewhere: it takes the keys from the test's
        // own.
        [[NSUserDefaults standardUserDefaults]
            registerDefaults:@{@"GSSuppressAppIcon" : @"YES", @"GSAppOwnsMiniwindow" : @"NO"}];
        [NSApplication sharedApplication];
        [NSApp finishLaunching];
        return RUN_ALL_TESTS();
    }
}
