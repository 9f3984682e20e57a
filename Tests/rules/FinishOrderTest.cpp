#include "download/FinishOrder.hpp"

#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <set>

using vant::FinishOrder;

namespace {

/// Downloads by their number, whose paths are their numbers too.
class Downloads {
public:
    explicit Downloads(std::size_t count) : names_(count) {}
    FinishOrder::Download operator[](std::size_t number) const { return &names_.at(number); }
    std::size_t numberOf(FinishOrder::Download download) const {
        return static_cast<std::size_t>(static_cast<const char *>(download) - names_.data());
    }

private:
    std::vector<char> names_;
};

class FinishOrderTest : public testing::Test {
protected:
    void start(std::size_t number) { order.started(downloads[number], std::to_string(number)); }
    void startAndCreate(std::size_t number) {
        start(number);
        order.created(downloads[number]);
    }
    /// What may be announced now, when the files to be expanded are nobody's.
    std::vector<std::size_t> announced() {
        std::vector<std::size_t> numbers;
        while (const auto download = order.next(""))
            numbers.push_back(downloads.numberOf(*download));
        return numbers;
    }

    const Downloads downloads{64};
    FinishOrder order;
};

using Numbers = std::vector<std::size_t>;

TEST_F(FinishOrderTest, AFinishWaitsForEveryFileCreatedBefore) {
    for (const std::size_t number : Numbers{0, 1, 2})
        startAndCreate(number);
    EXPECT_TRUE(order.finished(downloads[2]));
    EXPECT_EQ(announced(), Numbers{});
    EXPECT_TRUE(order.finished(downloads[1]));
    EXPECT_EQ(announced(), Numbers{});
    EXPECT_TRUE(order.finished(downloads[0]));
    EXPECT_EQ(announced(), (Numbers{0, 1, 2}));
    EXPECT_EQ(announced(), Numbers{});
}

TEST_F(FinishOrderTest, TheOrderIsThatOfTheFilesAndNotOfTheStarts) {
    for (const std::size_t number : Numbers{0, 1, 2})
        start(number);
    for (const std::size_t number : Numbers{2, 0, 1})
        order.created(downloads[number]);
    for (const std::size_t number : Numbers{0, 1, 2})
        EXPECT_TRUE(order.finished(downloads[number]));
    EXPECT_EQ(announced(), (Numbers{2, 0, 1}));
}

TEST_F(FinishOrderTest, AFailureReleasesWhatWaitedForIt) {
    for (const std::size_t number : Numbers{0, 1, 2})
        startAndCreate(number);
    EXPECT_TRUE(order.finished(downloads[1]));
    order.failed(downloads[0]);
    EXPECT_EQ(announced(), Numbers{1});
    EXPECT_TRUE(order.finished(downloads[2]));
    EXPECT_EQ(announced(), Numbers{2});
}

TEST_F(FinishOrderTest, ADownloadWithoutAFileHoldsNobodyBackAndIsNotHeld) {
    start(0);
    startAndCreate(1);
    EXPECT_TRUE(order.finished(downloads[1]));
    EXPECT_EQ(announced(), Numbers{1});
    EXPECT_FALSE(order.finished(downloads[0]));
    EXPECT_FALSE(order.finished(downloads[7])); // nobody has heard of it
    EXPECT_EQ(announced(), Numbers{});
}

TEST_F(FinishOrderTest, AFileThatIsBeingWrittenAnewIsNotExpanded) {
    startAndCreate(0);
    order.started(downloads[9], "0");
    EXPECT_TRUE(order.finished(downloads[0]));
    EXPECT_EQ(order.next("0"), std::nullopt);
    EXPECT_EQ(order.next("another file"), downloads[0]);
}

TEST_F(FinishOrderTest, ARetrysEndReleasesTheFileThatItWroteAnew) {
    for (const bool fails : {false, true}) {
        FinishOrder fresh;
        fresh.started(downloads[0], "P");
        fresh.created(downloads[0]);
        fresh.started(downloads[1], "P");
        fresh.created(downloads[1]);
        EXPECT_TRUE(fresh.finished(downloads[0]));
        EXPECT_EQ(fresh.next("P"), std::nullopt);
        if (fails)
            fresh.failed(downloads[1]);
        else
            EXPECT_TRUE(fresh.finished(downloads[1]));
        EXPECT_EQ(fresh.next("P"), downloads[0]);
    }
}

TEST_F(FinishOrderTest, AFileIsCreatedOnce) {
    startAndCreate(0);
    startAndCreate(1);
    order.created(downloads[0]);
    EXPECT_TRUE(order.finished(downloads[0]));
    EXPECT_EQ(announced(), Numbers{0});
    order.created(downloads[5]); // nobody has heard of it
    EXPECT_TRUE(order.finished(downloads[1]));
    EXPECT_EQ(announced(), Numbers{1});
}

TEST_F(FinishOrderTest, WhateverTheOrderOfTheEndsAllAreAnnouncedInTheOrderOfTheFiles) {
    std::mt19937 random(20261121);
    for (int round = 0; round < 2000; ++round) {
        FinishOrder shuffled;
        const std::size_t count = 1 + random() % 30;
        Numbers created(count);
        std::iota(created.begin(), created.end(), 0);
        for (const std::size_t number : created)
            shuffled.started(downloads[number], std::to_string(number));
        std::shuffle(created.begin(), created.end(), random);
        for (const std::size_t number : created)
            shuffled.created(downloads[number]);
        Numbers ends = created;
        std::shuffle(ends.begin(), ends.end(), random);
        const std::size_t broken = random() % (2 * count); // of a half of the rounds, none
        Numbers told;
        std::set<std::size_t> ended;
        for (const std::size_t number : ends) {
            if (number == broken)
                shuffled.failed(downloads[number]);
            else
                EXPECT_TRUE(shuffled.finished(downloads[number]));
            ended.insert(number);
            while (const auto download = shuffled.next("")) {
                told.push_back(downloads.numberOf(*download));
                for (const std::size_t earlier : created) {
                    if (earlier == told.back())
                        break;
                    EXPECT_TRUE(ended.contains(earlier)) << "file " << earlier << " is not whole";
                }
            }
        }
        std::erase(created, broken);
        EXPECT_EQ(told, created);
    }
}

} // namespace
