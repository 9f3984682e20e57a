#import "Pointer.h"

#include "Jail.hpp"

#include <cstdlib>
#include <gtest/gtest.h>

namespace {

using vant::test::contentsOf;
using vant::test::handleEventsUntil;
using vant::test::writeFile;
using vant::test::writeProgram;

/// A desktop whose opener writes down what it is asked to open.
class WorkspaceOpening : public testing::Test {
protected:
    void SetUp() override {
        if (!vant::test::becomeApplication())
            GTEST_SKIP() << "no display";
        log = jail.path("log").string();
        writeProgram(jail.path("bin/xdg-open"), "#!/bin/sh\nprintf '%s|' \"$@\" >>'" + log + "'\n");
        setenv("PATH", (jail.path("bin").string() + ":/usr/bin:/bin").c_str(), 1);
    }
    BOOL open(const std::filesystem::path &path) {
        return [[NSWorkspace sharedWorkspace] openFile:[NSString stringWithUTF8String:path.c_str()]];
    }
    static BOOL openAddress(NSString *address) {
        return [[NSWorkspace sharedWorkspace] openURL:[NSURL URLWithString:address]];
    }

    vant::test::Jail jail;
    std::string log;
};

TEST_F(WorkspaceOpening, AFolderIsOpenedByTheDesktop) {
    const auto folder = jail.path("Desktop/Quorvel Printer é");
    std::filesystem::create_directories(folder);
    EXPECT_TRUE(open(folder));
    EXPECT_TRUE(handleEventsUntil([&] { return contentsOf(log) == folder.string() + "|"; })) << contentsOf(log);
}

TEST_F(WorkspaceOpening, AnAddressOfTheWebIsOpenedByTheDesktop) {
    const std::string supplies = "https://example.com/supplies?of=a%20printer&x='$(y)'";
    EXPECT_TRUE(openAddress([NSString stringWithUTF8String:supplies.c_str()]));
    EXPECT_TRUE(handleEventsUntil([&] { return contentsOf(log) == supplies + "|"; })) << contentsOf(log);
}

TEST_F(WorkspaceOpening, AnAddressIsOfTheWebInCapitalsToo) {
    EXPECT_TRUE(openAddress(@"Http://example.com/"));
    EXPECT_TRUE(handleEventsUntil([&] { return contentsOf(log) == "Http://example.com/|"; })) << contentsOf(log);
}

TEST_F(WorkspaceOpening, AFileAddressIsOpenedLikeItsFile) {
    EXPECT_TRUE([[NSWorkspace sharedWorkspace]
        openURL:[NSURL fileURLWithPath:[NSString stringWithUTF8String:jail.root().c_str()]]]);
    EXPECT_TRUE(handleEventsUntil([&] { return contentsOf(log) == jail.root().string() + "|"; })) << contentsOf(log);
}

TEST_F(WorkspaceOpening, WithoutAnOpenerTheAnswerIsNo) {
    std::filesystem::remove(jail.path("bin/xdg-open"));
    setenv("PATH", jail.path("bin").c_str(), 1);
    EXPECT_FALSE(open(jail.root()));
    EXPECT_FALSE(openAddress(@"https://example.com/"));
}

TEST_F(WorkspaceOpening, AnOpenerThatCannotBeExecutedIsPassedOver) {
    std::filesystem::permissions(jail.path("bin/xdg-open"), std::filesystem::perms::owner_read);
    setenv("PATH", jail.path("bin").c_str(), 1);
    EXPECT_FALSE(open(jail.root()));
}

TEST_F(WorkspaceOpening, AFileOrNothingIsLeftToGNUstep) {
    EXPECT_FALSE(open(writeFile(jail.path("text.unknownkind"), "text")));
    EXPECT_FALSE(open(jail.path("missing")));
    EXPECT_FALSE(std::filesystem::exists(log));
}

} // namespace
