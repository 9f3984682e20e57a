#include "Timeline.hpp"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace vant::host;

TEST(HostTimeline, ALineHoldsTimeThreadKindAndText) {
    EXPECT_EQ(timelineLine(1.2346, "main", "status", "Installing..."),
              "    1.235  main      status       Installing...\n");
    EXPECT_EQ(timelineLine(0, "thread-1234", "a-very-long-kind", "text"),
              "    0.000  thread-1234 a-very-long-kind text\n");
}

TEST(HostTimeline, AnEventStaysOneLine) {
    EXPECT_EQ(timelineLine(0, "main", "status", "a\nb"), "    0.000  main      status       a\\nb\n");
}

TEST(HostTimeline, EveryThreadHasANameOfItsOwn) {
    const std::string own = threadName();
    std::string first;
    std::string second;
    std::thread([&first] { first = threadName(); }).join();
    std::thread([&second] { second = threadName(); }).join();
    EXPECT_EQ(threadName(), own);
    EXPECT_NE(first, own);
    EXPECT_NE(second, own);
    EXPECT_NE(first, second);
}

TEST(HostTimeline, LinesOfManyThreadsStayWholeAndInTheOrderOfTheirTimes) {
    const auto path = std::filesystem::temp_directory_path() / ("vant-timeline-" + std::to_string(getpid()));
    {
        Timeline timeline(path);
        std::vector<std::thread> threads;
        threads.reserve(4);
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([&timeline] {
                for (int j = 0; j < 100; ++j)
                    timeline.record("bar", "value");
            });
        for (std::thread &thread : threads)
            thread.join();
    }
    std::ifstream file(path);
    std::string line;
    double last = 0;
    int lines = 0;
    while (std::getline(file, line)) {
        std::istringstream fields(line);
        double seconds = -1;
        std::string thread;
        std::string kind;
        std::string text;
        fields >> seconds >> thread >> kind >> text;
        EXPECT_GE(seconds, last) << line;
        EXPECT_EQ(kind + " " + text, "bar value") << line;
        last = seconds;
        ++lines;
    }
    EXPECT_EQ(lines, 400);
    std::filesystem::remove(path);
}
