#pragma once

namespace vant {

/// Reading and writing a plain value that two threads share: each access is whole, and none orders another. The values
/// keep their plain types, because hosts read them by name; the standard's references to atomics are newer than the
/// oldest toolchain that builds the plug-in.
template<class Value>
[[nodiscard]] Value sharedValue(const Value &shared) noexcept {
    Value value;
    __atomic_load(&shared, &value, __ATOMIC_RELAXED);
    return value;
}

/// Writes a value that another thread may read meanwhile.
template<class Value>
void setSharedValue(Value &shared, Value value) noexcept {
    __atomic_store(&shared, &value, __ATOMIC_RELAXED);
}

/// Adds one to a counter that one thread at a time writes; gives the new value.
template<class Integer>
Integer incrementSharedValue(Integer &shared) noexcept {
    return __atomic_add_fetch(&shared, 1, __ATOMIC_RELAXED);
}

} // namespace vant
