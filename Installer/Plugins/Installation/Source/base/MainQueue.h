#pragma once
#include <dispatch/dispatch.h>
#include <memory>
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

} // namespace vant
