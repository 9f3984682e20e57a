#include "GNUstep/download/Poller.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

namespace vant::test {
namespace {

using namespace std::chrono_literals;

bool readable(int descriptor, int milliseconds) {
    pollfd one{.fd = descriptor, .events = POLLIN, .revents = 0};
    return ::poll(&one, 1, milliseconds) == 1;
}

} // namespace

TEST(UrlDownloadPoller, IsReadableOnceASocketIs) {
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    DownloadPoller poller;
    poller.watch({.socket = ends[0], .reading = true});
    EXPECT_FALSE(readable(poller.descriptor(), 0));
    EXPECT_TRUE(poller.ready().empty());
    ASSERT_EQ(::write(ends[1], "x", 1), 1);
    EXPECT_TRUE(readable(poller.descriptor(), 1000));
    ASSERT_EQ(poller.ready().size(), 1U);
    EXPECT_EQ(poller.ready().front().socket, ends[0]);
    EXPECT_FALSE(poller.hasMore());
    poller.forget(ends[0]);
    EXPECT_FALSE(readable(poller.descriptor(), 0));
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST(UrlDownloadPoller, AlarmMakesItReadableAndTellsHowLateItIs) {
    DownloadPoller poller;
    const auto due = Clock::now() + 20ms;
    poller.alarmAt(due);
    EXPECT_EQ(poller.takeAlarm(Clock::now()), Clock::duration::zero());
    EXPECT_TRUE(readable(poller.descriptor(), 2000));
    EXPECT_TRUE(poller.ready().empty());
    EXPECT_EQ(poller.takeAlarm(due + 5s), 5s);
    EXPECT_FALSE(readable(poller.descriptor(), 0));
    EXPECT_EQ(poller.takeAlarm(due + 5s), Clock::duration::zero());
}

TEST(UrlDownloadPoller, WaitsForTheAlarmAndNoLonger) {
    DownloadPoller poller;
    poller.alarmAt(Clock::now() + 20ms);
    poller.wait(1h);
    EXPECT_TRUE(readable(poller.descriptor(), 0));
}

TEST(UrlDownloadPoller, WaitsNoLongerThanItIsAskedTo) {
    DownloadPoller poller;
    poller.wait(1ms);
    EXPECT_FALSE(readable(poller.descriptor(), 0));
}

TEST(UrlDownloadPoller, AlarmStaysDueUntilItIsTaken) {
    DownloadPoller poller;
    poller.alarmAt(Clock::now());
    ASSERT_TRUE(readable(poller.descriptor(), 2000));
    EXPECT_TRUE(poller.ready().empty());
    EXPECT_TRUE(readable(poller.descriptor(), 2000));
}

TEST(UrlDownloadPoller, EarlierAlarmWins) {
    DownloadPoller poller;
    const auto now = Clock::now();
    poller.alarmAt(now + 1h);
    poller.alarmAt(now + 10ms);
    poller.alarmAt(now + 2h);
    EXPECT_TRUE(readable(poller.descriptor(), 2000));
}

} // namespace vant::test
