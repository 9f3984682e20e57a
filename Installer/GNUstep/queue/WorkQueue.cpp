#include "GNUstep/queue/WorkQueue.hpp"

namespace vant {

bool WorkQueue::add(WorkItem item) {
    const std::scoped_lock lock(mutex_);
    waiting_.push_back(item);
    if (wakeUpSent_ || atWork_)
        return false;
    return wakeUpSent_ = true;
}

std::optional<std::vector<WorkItem>> WorkQueue::startBatch() {
    const std::scoped_lock lock(mutex_);
    wakeUpSent_ = false;
    if (atWork_)
        return std::nullopt;
    atWork_ = true;
    return std::exchange(waiting_, {});
}

bool WorkQueue::endBatch(const std::vector<WorkItem> &rest) {
    const std::scoped_lock lock(mutex_);
    waiting_.insert(waiting_.begin(), rest.begin(), rest.end());
    atWork_ = false;
    return wakeUpSent_ = !waiting_.empty();
}

} // namespace vant
