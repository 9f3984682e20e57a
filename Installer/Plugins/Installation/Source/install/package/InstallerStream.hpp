#pragma once
#include <array>
#include <cstddef>
#include <cstdio>

namespace vant {

/// Owns the communications stream of a running package installer and reads it line by line. A stream that is absent is
/// at its end from the start. Signals that interrupt a read neither end the stream nor lose a part of a line, which the
/// C library's line reading does not promise. Installer thread.
class InstallerStream {
public:
    /// Takes the stream over; nothing must have been read from it.
    explicit InstallerStream(std::FILE *stream) noexcept : stream_(stream) {}
    InstallerStream(const InstallerStream &) = delete;
    InstallerStream &operator=(const InstallerStream &) = delete;
    InstallerStream(InstallerStream &&) = delete;
    InstallerStream &operator=(InstallerStream &&) = delete;
    /// Closes the stream.
    ~InstallerStream();

    /// The next line, at most 1023 bytes of it, with its line feed when that is among them; null at the stream's end.
    /// Valid until the next call. Blocks while the installer is silent.
    [[nodiscard]] const char *nextLine() noexcept;

    /// Reads the stream to its end, so that an installer that still writes is not killed by a closed stream.
    void drain() noexcept;

private:
    /// Reads on; false at the end of the stream.
    bool refill() noexcept;

    std::FILE *stream_;
    std::array<char, 1024> line_{};
    std::array<char, 4096> read_{};
    std::size_t next_ = 0; ///< what has been read and not yet handed out lies between here
    std::size_t end_ = 0;  ///< and here
};

} // namespace vant
