#pragma once
#include "GNUstep/download/Errors.hpp"

#include <cstdint>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace vant {

/// What to do with a file that stands at the destination already.
enum class Existing { replace, keep };

/// The file a download writes: created, filled, then kept or removed. The descriptor is closed on exec.
class DownloadFile {
public:
    DownloadFile() = default;
    DownloadFile(const DownloadFile &) = delete;
    DownloadFile &operator=(const DownloadFile &) = delete;
    ~DownloadFile();

    /// Creates the file, once. `Existing::keep` leaves a file of that name alone and takes the next free numbered name.
    [[nodiscard]] DownloadError create(const std::string &path, Existing existing);

    /// Appends the bytes.
    [[nodiscard]] DownloadError write(std::string_view bytes) noexcept;

    /// The bytes that its volume has left for this user; 0 when they can't be told.
    [[nodiscard]] std::uint64_t freeSpace() const noexcept;

    /// Ends the writing; the file stays.
    [[nodiscard]] DownloadError close() noexcept;

    /// Ends the writing and removes the file, unless another one has taken its name meanwhile.
    void remove() noexcept;

    /// True from a successful `create` on, closed or not.
    [[nodiscard]] bool created() const noexcept { return !path_.empty(); }

    /// The path of the file created; empty before.
    [[nodiscard]] const std::string &path() const noexcept { return path_; }

private:
    int descriptor_ = -1;
    dev_t device_ = 0;
    ino_t inode_ = 0;
    std::string path_;
};

} // namespace vant
