#pragma once
#include <string>

namespace vant {

/// Where an expansion into `folder` is done: in `folder` itself when it exists, since that is a merge; otherwise in a
/// hidden folder beside it, which `commit` gives its name and the destructor removes when there was no commit.
class Staging {
public:
    /// Creates the folders above `folder` where they are missing. Throws ExpansionError.
    explicit Staging(const std::string &folder);
    Staging(const Staging &) = delete;
    Staging &operator=(const Staging &) = delete;
    ~Staging();

    [[nodiscard]] const std::string &folder() const { return staged_; }

    /// Everything is written: the result takes its place. Throws ExpansionError.
    void commit();

private:
    std::string wanted_;
    std::string staged_;
};

} // namespace vant
