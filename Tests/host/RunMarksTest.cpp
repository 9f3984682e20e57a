#include "RunMarks.hpp"

#include "TestFolder.hpp"

#include <cstdio>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace vant::host;
using Lines = std::vector<std::string>;

TEST(HostRunMarks, WhatWasSaidBetweenTwoMarksIsOnePackages) {
    const std::string log = "before\none\n\ntwo\nthree";
    const std::vector<Mark> marks = {{7, 0}, {12, 0}, {12, 0}, {100, 0}};
    EXPECT_EQ(messagesBetween(log, marks), (std::vector<Lines>{{"one"}, {}, {"two", "three"}}));
    EXPECT_TRUE(messagesBetween(log, {}).empty());
}

TEST(HostRunMarks, TheHostsOwnLinesAreNoMessages) {
    const std::string log =
        "2026-11-21 12:00:00.000 VantHost[7:8] autorelease called\nVantHost: ended\ninstaller: bad\n";
    EXPECT_EQ(messagesBetween(log, {{0, 0}, {log.size(), 0}}), (std::vector<Lines>{{"installer: bad"}}));
}

TEST(HostRunMarks, FilesBelongToTheTimeInWhichTheyWereWritten) {
    const TestFolder folder;
    for (int round = 0; round < 20; ++round) {
        const std::string place = std::to_string(round);
        folder.write(place + "/early");
        std::vector<Mark> marks = {markNow(-1)};
        folder.write(place + "/a/one");
        folder.write(place + "/a/two");
        marks.push_back(markNow(-1));
        folder.write(place + "/b/three");
        folder.link(place + "/b/link to nothing");
        folder.write(place + "/b/four");
        marks.push_back(markNow(-1));
        folder.write(place + "/late");
        EXPECT_EQ(filesBetween(folder.path(), marks), (std::vector<std::size_t>{2, 3}));
    }
    EXPECT_EQ(filesBetween(folder.path() + "/missing", {{0, 0}, {0, 1}}), (std::vector<std::size_t>{0}));
    EXPECT_TRUE(filesBetween(folder.path(), {}).empty());
}

TEST(HostRunMarks, TheLogIsReadThroughADescriptorForWriting) {
    const TestFolder folder;
    std::FILE *log = std::fopen((folder.path() + "/log").c_str(), "w");
    std::fputs("said\n", log);
    std::fflush(log);
    EXPECT_EQ(markNow(fileno(log)).logSize, 5U);
    EXPECT_EQ(logText(fileno(log)), "said\n");
    std::fclose(log);
}

TEST(HostRunMarks, AnythingButAFileIsAnEmptyLog) {
    int ends[2] = {};
    ASSERT_EQ(pipe(ends), 0);
    EXPECT_EQ(write(ends[1], "x", 1), 1);
    EXPECT_EQ(markNow(ends[0]).logSize, 0U);
    EXPECT_EQ(logText(ends[0]), "");
    EXPECT_EQ(logText(-1), "");
    close(ends[0]);
    close(ends[1]);
}

TEST(HostRunMarks, NamesTheArchivesThatWereNotExpanded) {
    const std::string log = "ditto: /tmp/V/Download/Fax 2.zip: the archive is empty\n"
                            "ditto: /tmp/V/Profiles/p.zip: bad\nditto: /tmp/V/Download/broken\nother\n"
                            "ditto: /tmp/V/Download/A.cpio.gz: cut short\n";
    const auto failures = expansionFailures(log, "/tmp/V/Download");
    ASSERT_EQ(failures.size(), 2U);
    EXPECT_EQ(failures[0].archive, "Fax 2.zip");
    EXPECT_EQ(failures[1].archive, "A.cpio.gz");
    EXPECT_EQ(failures[1].words, "cut short");
}
