#import "DownloadFixture.h"

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <set>

namespace vant::test {

using UrlDownloadCost = DownloadTest;

namespace {

std::set<int> descriptors() {
    std::set<int> numbers;
    for (const auto &entry : std::filesystem::directory_iterator("/proc/self/fd"))
        numbers.insert(std::stoi(entry.path().filename()));
    return numbers;
}

/// The most memory the process held since the last call, in KiB; 0 where the kernel does not tell.
long peakSinceLast() {
    std::ifstream status("/proc/self/status");
    long peak = 0;
    for (std::string word; status >> word;)
        if (word == "VmHWM:")
            status >> peak;
    std::ofstream("/proc/self/clear_refs") << 5;
    return peak;
}

} // namespace

TEST_F(UrlDownloadCost, ThreeHundredDownloadsLeaveNoDescriptorBehind) {
    server.serve("/keep", HttpReply{.body = "x"});
    server.serve("/close", HttpReply{.body = "x", .framing = Framing::close});
    server.serve("/lost", HttpReply{.body = "xx", .fault = Fault::close, .faultAfter = 1});
    const auto round = [&] {
        NSMutableArray *recorders = [NSMutableArray array];
        for (const char *target : {"/keep", "/close", "/lost", "/none", "/keep", "/keep"}) {
            [recorders addObject:[[[DownloadRecorder alloc] init] autorelease]];
            [startRequest(request(server.url(target)), [recorders lastObject]) setDestination:path(@"file")
                                                                               allowOverwrite:NO];
        }
        EXPECT_TRUE(runUntil([&] {
            for (DownloadRecorder *each in recorders)
                if (![each done])
                    return false;
            return true;
        }));
    };
    round();
    const auto before = openDescriptors();
    for (int i = 0; i < 50; ++i) {
        @autoreleasepool {
            round();
        }
    }
    // Connections that wait for the next download, both ends of them, may differ by a few.
    EXPECT_LE(openDescriptors(), before + 8);
}

TEST_F(UrlDownloadCost, DescriptorsAreClosedInChildProcesses) {
    runFor(0.01); // the run loop has descriptors of its own
    const auto before = descriptors();
    server.serve("/a", HttpReply{.body = pattern(1000), .fault = Fault::stall, .faultAfter = 500});
    start(server.url("/a"));
    for (const int number : descriptors())
        if (!before.contains(number) && ::fcntl(number, F_GETFD) >= 0)
            EXPECT_TRUE((::fcntl(number, F_GETFD) & FD_CLOEXEC) != 0) << "before anything ran: " << number;
    ASSERT_TRUE(runUntil([&] { return [recorder->pieces count] > 0; }));
    for (const int number : descriptors())
        if (!before.contains(number) && ::fcntl(number, F_GETFD) >= 0)
            EXPECT_TRUE((::fcntl(number, F_GETFD) & FD_CLOEXEC) != 0) << "while it runs: " << number;
}

TEST_F(UrlDownloadCost, LargeFileCostsNoMoreMemoryThanASmallOne) {
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
    GTEST_SKIP() << "a sanitizer keeps memory of its own for what was given back";
#endif
    server.serve("/small", HttpReply{.patternLength = 1'000'000});
    server.serve("/large", HttpReply{.patternLength = 200'000'000});
    fetch(server.url("/small"));
    (void)peakSinceLast();
    [recorder release];
    recorder = [[DownloadRecorder alloc] init];
    fetch(server.url("/small"));
    const long small = peakSinceLast();
    [recorder release];
    recorder = [[DownloadRecorder alloc] init];
    fetch(server.url("/large"));
    const long large = peakSinceLast();
    ASSERT_GT(small, 0);
    EXPECT_EQ([recorder received], 200'000'000U);
    EXPECT_LT(large - small, 4096) << small << " KiB, then " << large;
}

} // namespace vant::test
