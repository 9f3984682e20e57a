#pragma once
#import <Foundation/Foundation.h>
#include <type_traits>
#include <utility>

namespace vant {

/// Owns one reference to an Objective-C object for the length of a scope. The factory says what is handed over:
/// `assume` takes a reference that the caller already owns (`alloc`, `copy`), `retain` takes one of its own.
template<class T>
class Retained {
public:
    /// Owns nothing.
    Retained() = default;
    [[nodiscard]] static Retained assume(T *object) { return Retained(object); }
    [[nodiscard]] static Retained retain(T *object) { return Retained([object retain]); }

    Retained(const Retained &other) : object_([other.object_ retain]) {}
    Retained(Retained &&other) noexcept : object_(std::exchange(other.object_, nil)) {}
    Retained &operator=(Retained other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Retained() { [object_ release]; }

    /// The object, nil for none; valid as long as its owner.
    [[nodiscard]] T *get() const { return object_; }

private:
    explicit Retained(T *object) : object_(object) {}
    T *object_ = nil;
};

/// Stores a value in a field that owns it: takes the new reference before it gives up the old one.
template<class T>
void hold(T *&field, std::type_identity_t<T> *value) {
    T *previous = std::exchange(field, [value retain]);
    [previous release];
}

/// Gives a field that owns a list a new, empty one.
inline void renew(NSMutableArray *&list) {
    hold(list, [NSMutableArray array]);
}

} // namespace vant
