#include "GNUstep/queue/WorkQueue.hpp"

#include <gtest/gtest.h>

namespace {

using vant::Batch;
using vant::WorkItem;
using vant::WorkQueue;

WorkItem item(int *context) {
    return {.work = [](void *number) { ++*static_cast<int *>(number); }, .context = context};
}

std::vector<void *> contextsOf(const std::vector<WorkItem> &items) {
    std::vector<void *> contexts;
    contexts.reserve(items.size());
    for (const WorkItem &each : items)
        contexts.push_back(each.context);
    return contexts;
}

TEST(WorkQueue, OneWakeUpServesManyItems) {
    WorkQueue queue;
    int n[3] = {};
    EXPECT_TRUE(queue.add(item(&n[0])));
    EXPECT_FALSE(queue.add(item(&n[1])));
    EXPECT_FALSE(queue.add(item(&n[2])));
    EXPECT_EQ(contextsOf(queue.startBatch().value()), (std::vector<void *>{&n[0], &n[1], &n[2]}));
    EXPECT_FALSE(queue.endBatch({}));
    EXPECT_TRUE(queue.add(item(&n[0]))) << "a new item after the batch needs a new wake-up";
}

TEST(WorkQueue, WhatIsAddedDuringABatchIsTheNextBatch) {
    WorkQueue queue;
    int n[2] = {};
    (void)queue.add(item(&n[0]));
    ASSERT_TRUE(queue.startBatch());
    EXPECT_FALSE(queue.add(item(&n[1]))) << "the end of the batch sends the wake-up";
    EXPECT_TRUE(queue.endBatch({}));
    EXPECT_EQ(contextsOf(queue.startBatch().value()), std::vector<void *>{&n[1]});
}

TEST(WorkQueue, ASecondBatchWaitsForTheFirst) {
    WorkQueue queue;
    int n[2] = {};
    (void)queue.add(item(&n[0]));
    ASSERT_TRUE(queue.startBatch());
    (void)queue.add(item(&n[1]));
    EXPECT_FALSE(queue.startBatch());
    EXPECT_TRUE(queue.endBatch({}));
    EXPECT_TRUE(queue.startBatch());
}

TEST(WorkQueue, ItemsThatABatchDidNotReachComeFirstInTheNext) {
    WorkQueue queue;
    int n[3] = {};
    for (int &each : n)
        (void)queue.add(item(&each));
    int wakeUps = 0;
    {
        Batch batch(queue, queue.startBatch().value(), [&] { ++wakeUps; });
        EXPECT_EQ(batch.next()->context, &n[0]);
        (void)queue.add(item(&n[0]));
    }
    EXPECT_EQ(wakeUps, 1);
    EXPECT_EQ(contextsOf(queue.startBatch().value()), (std::vector<void *>{&n[1], &n[2], &n[0]}));
}

TEST(WorkQueue, AFinishedBatchSendsNoWakeUp) {
    WorkQueue queue;
    int n = 0;
    (void)queue.add(item(&n));
    int wakeUps = 0;
    {
        Batch batch(queue, queue.startBatch().value(), [&] { ++wakeUps; });
        while (const auto next = batch.next())
            next->work(next->context);
        EXPECT_FALSE(batch.next());
    }
    EXPECT_EQ(n, 1);
    EXPECT_EQ(wakeUps, 0);
}

} // namespace
