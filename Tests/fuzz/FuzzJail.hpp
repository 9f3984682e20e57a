#pragma once
#include "GNUstep/tools/archive/ExpansionError.hpp"
#include "GNUstep/tools/tree/Destination.hpp"
#include "GNUstep/tools/tree/Expansion.hpp"

#include <sys/mman.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace vant::fuzz {

/// Ends the run with a finding when something does not hold.
inline void require(bool holds) {
    if (!holds)
        std::abort();
}

/// One input as a file, and a folder of its own to expand it into.
class FuzzJail {
public:
    FuzzJail() : file_(::memfd_create("input", MFD_CLOEXEC)) {
        std::string pattern = (std::filesystem::temp_directory_path() / "vant-fuzz-XXXXXX").string();
        require(file_ && ::mkdtemp(pattern.data()) != nullptr);
        root_ = pattern;
        std::filesystem::create_directory(out());
    }
    FuzzJail(const FuzzJail &) = delete;
    FuzzJail &operator=(const FuzzJail &) = delete;
    ~FuzzJail() {
        std::error_code ignored;
        for (auto item = std::filesystem::recursive_directory_iterator(root_, ignored);
             item != std::filesystem::end(item); item.increment(ignored))
            if (item->is_directory(ignored) && !item->is_symlink(ignored))
                std::filesystem::permissions(item->path(), std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(root_, ignored);
    }

    /// The path of a file with these bytes.
    [[nodiscard]] std::string input(const std::uint8_t *data, std::size_t size) const {
        require(::pwrite(file_.get(), data, size, 0) == static_cast<ssize_t>(size));
        return "/proc/self/fd/" + std::to_string(file_.get());
    }

    /// Expands into the folder. Whatever the archive says, nothing appears beside it.
    void expandHere(tools::EntryReader &reader) const {
        tools::Destination destination(out(), 0755);
        try {
            tools::expand(reader, destination, limits, [] {});
        } catch (const tools::ExpansionError &) {
            expectNothingBeside();
            return;
        }
        expectNothingBeside();
    }

private:
    static constexpr tools::Limits limits{.entries = 200, .bytes = std::uint64_t{1} << 20};

    [[nodiscard]] std::filesystem::path out() const { return root_ / "out"; }

    void expectNothingBeside() const {
        const auto items = std::filesystem::directory_iterator(root_);
        require(std::distance(begin(items), end(items)) == 1);
    }

    Descriptor file_;
    std::filesystem::path root_;
};

} // namespace vant::fuzz
