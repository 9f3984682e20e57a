#pragma once
#include "GNUstep/download/Errors.hpp"

#include <string>
#include <string_view>

namespace vant {

/// What to do with a file that stands at the destination already.
enum class Existing { replace, keep };

/// The file a download writes: made, filled, then kept or taken away again. The descriptor is closed on exec.
class DownloadFile {
public:
    DownloadFile() = default;
    DownloadFile(const DownloadFile &) = delete;
    DownloadFile &operator=(const DownloadFile &) = delete;
    ~DownloadFile();

    /// Makes the file, once. `Existing::keep` leaves a file of that name alone and takes the next free numbered name.
    [[nodiscard]] DownloadError create(const std::string &path, Existing existing);

    /// Appends the bytes.
    [[nodiscard]] DownloadError write(std::string_view bytes) noexcept;

    /// Ends the writing; the file stays.
    [[nodiscard]] DownloadError close() noexcept;

    /// Ends the writing and removes the file, unless another one has taken its name meanwhile.
    void remove() noexcept;

    /// True from a successful `create` on, closed or not.
    [[nodiscard]] bool created() const noexcept { return !path_.empty(); }

    /// The path of the file made; empty before.
    [[nodiscard]] const std::string &path() const noexcept { return path_; }

private:
    int descriptor_ = -1;
    unsigned long long device_ = 0;
    unsigned long long inode_ = 0;
    std::string path_;
};

} // namespace vant
