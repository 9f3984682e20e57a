#pragma once
#include <chrono>
#include <condition_variable>
#include <dispatch/dispatch.h>
#include <memory>
#include <mutex>
#include <utility>

namespace vant {

/// Runs the work on the main queue, later, from any thread. What the work needs it must own: captured Objective-C
/// objects belong in a `Retained`.
template<class Work>
void onMainQueue(Work work) {
    auto owned = std::make_unique<Work>(std::move(work));
    dispatch_async_f(dispatch_get_main_queue(), owned.release(), [](void *context) {
        const std::unique_ptr<Work> taken(static_cast<Work *>(context));
        (*taken)();
    });
}

/// As above, and waits until the work has been done, at most for the time given: a main thread that a host holds must
/// not hold the caller for good. The work is done in any case, if need be after the call has returned. Not for callers
/// on the main thread.
template<class Work>
void onMainQueueAndWait(Work work, std::chrono::milliseconds longest) {
    struct Gate {
        std::mutex mutex;
        std::condition_variable opened;
        bool done = false;
    };
    auto gate = std::make_shared<Gate>();
    onMainQueue([gate, work = std::move(work)]() mutable {
        work();
        const std::lock_guard lock(gate->mutex);
        gate->done = true;
        gate->opened.notify_one();
    });
    std::unique_lock lock(gate->mutex);
    gate->opened.wait_for(lock, longest, [&gate] { return gate->done; });
}

} // namespace vant
