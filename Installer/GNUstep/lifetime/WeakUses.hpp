#pragma once
#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vant {

/// Who refers to an object without holding it: the notification centre, and controls whose target it is. Objects are
/// known by their addresses alone. Any thread.
class WeakUses {
public:
    struct Uses {
        bool observes = false;               ///< whether it has been registered with the notification centre
        std::vector<const void *> targeters; ///< what sends its action to it
    };

    void addObserver(const void *object) {
        const std::lock_guard lock(mutex_);
        usesOf(object).observes = true;
    }

    void removeObserver(const void *object) {
        const std::lock_guard lock(mutex_);
        if (const auto found = uses_.find(object); found != uses_.end())
            found->second.observes = false;
    }

    /// The control sends its action to another object than before; null for none.
    void setTarget(const void *control, const void *before, const void *now) {
        const std::lock_guard lock(mutex_);
        dropTargeter(control, before);
        if (now == nullptr)
            return;
        mark(control);
        usesOf(now).targeters.push_back(control);
    }

    /// Whether the object may be in use or a control; no lock is taken for nearly all of those that are neither.
    [[nodiscard]] bool mayKnow(const void *object) const noexcept {
        return marks_[slot(object)].load(std::memory_order_relaxed);
    }

    /// Takes all uses of an object out, which is about to go.
    [[nodiscard]] Uses take(const void *object) {
        const std::lock_guard lock(mutex_);
        const auto found = uses_.find(object);
        if (found == uses_.end())
            return {};
        Uses taken = std::move(found->second);
        uses_.erase(found);
        return taken;
    }

private:
    static std::size_t slot(const void *object) noexcept {
        return (reinterpret_cast<std::uintptr_t>(object) >> 4U) % std::tuple_size_v<decltype(marks_)>;
    }

    void mark(const void *object) noexcept { marks_[slot(object)].store(true, std::memory_order_relaxed); }

    Uses &usesOf(const void *object) {
        mark(object);
        return uses_[object];
    }

    void dropTargeter(const void *control, const void *target) {
        if (const auto found = uses_.find(target); found != uses_.end())
            std::erase(found->second.targeters, control);
    }

    std::mutex mutex_;
    std::unordered_map<const void *, Uses> uses_;
    std::array<std::atomic<bool>, 65536> marks_{};
};

} // namespace vant
