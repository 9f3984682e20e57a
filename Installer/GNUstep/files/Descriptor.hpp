#pragma once
#include <unistd.h>

#include <utility>

namespace vant {

/// Owner of a file descriptor; closes it. -1 stands for none.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor &&other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor &operator=(Descriptor &&other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor() { close(); }

    [[nodiscard]] int get() const { return number_; }
    [[nodiscard]] explicit operator bool() const { return number_ >= 0; }

    /// Hands the number over: closing it is the caller's business from here on.
    [[nodiscard]] int release() { return std::exchange(number_, -1); }

    /// Closes now; false when the system reports a late write error.
    bool close() { return number_ < 0 || ::close(std::exchange(number_, -1)) == 0; }

private:
    int number_ = -1;
};

} // namespace vant
