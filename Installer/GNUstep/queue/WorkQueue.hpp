#pragma once
#include <cstddef>
#include <iterator>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace vant {

struct WorkItem {
    void (*work)(void *context);
    void *context;
};

/// The items of a serial queue that one wake-up serves, however many they are. Any thread.
class WorkQueue {
public:
    /// Adds an item at the end. True: the caller must send a wake-up, on which `startBatch` is called.
    [[nodiscard]] bool add(WorkItem item);

    /// Everything that waits; nothing while an earlier batch is still at work. What is added from now on is the next
    /// batch's, so that a busy producer cannot keep a run loop from its other sources.
    [[nodiscard]] std::optional<std::vector<WorkItem>> startBatch();

    /// Ends a batch; items that it did not reach go back to the head. True: the caller must send a wake-up.
    [[nodiscard]] bool endBatch(const std::vector<WorkItem> &rest);

private:
    std::mutex mutex_;
    std::vector<WorkItem> waiting_;
    bool wakeUpSent_ = false;
    bool atWork_ = false;
};

/// Runs the items of one batch in turn, and ends the batch even when an item leaves by an exception. `Wake` is called
/// when a wake-up must be sent.
template<class Wake>
class Batch {
public:
    Batch(WorkQueue &queue, std::vector<WorkItem> items, Wake wake)
        : queue_(queue), items_(std::move(items)), wake_(wake) {}
    Batch(const Batch &) = delete;
    Batch &operator=(const Batch &) = delete;
    ~Batch() {
        items_.erase(items_.begin(), items_.begin() + next_);
        if (queue_.endBatch(items_))
            wake_();
    }
    [[nodiscard]] std::optional<WorkItem> next() {
        if (next_ == std::ssize(items_))
            return std::nullopt;
        return items_[static_cast<std::size_t>(next_++)];
    }

private:
    WorkQueue &queue_;
    std::vector<WorkItem> items_;
    std::ptrdiff_t next_ = 0;
    Wake wake_;
};

} // namespace vant
