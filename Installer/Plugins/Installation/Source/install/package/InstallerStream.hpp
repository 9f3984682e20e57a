#pragma once
#include <array>
#include <cstdio>

namespace vant {

/// Owns the communications stream of a running package installer and reads it line by line. A stream that is absent is
/// at its end from the start.
class InstallerStream {
public:
    explicit InstallerStream(std::FILE *stream) noexcept : stream_(stream) {}
    InstallerStream(const InstallerStream &) = delete;
    InstallerStream &operator=(const InstallerStream &) = delete;
    InstallerStream(InstallerStream &&) = delete;
    InstallerStream &operator=(InstallerStream &&) = delete;
    ~InstallerStream();

    /// The next line, at most 1023 bytes of it, with its line feed when that is among them; null at the stream's end.
    /// Valid until the next call. Blocks while the installer is silent.
    [[nodiscard]] const char *nextLine() noexcept;

    /// Reads the stream to its end, so that an installer that still writes is not killed by a closed stream.
    void drain() noexcept;

private:
    std::FILE *stream_;
    std::array<char, 1024> line_{};
};

} // namespace vant
