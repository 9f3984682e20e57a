#pragma once
#include "GNUstep/download/Messages.hpp"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vant {

/// The head of an HTTP response, read line by line.
class ResponseHead {
public:
    enum class State {
        incomplete,
        complete, ///< The empty line after a final response; interim responses (1xx) are skipped.
        tooLong,  ///< More than any honest server sends.
    };

    /// Adds a line, with or without its line end. Lines before the first status line are ignored.
    State addLine(std::string_view line);

    /// What was read so far, without an address. `status` is 0 before the first status line.
    [[nodiscard]] const DownloadResponse &response() const noexcept { return response_; }

private:
    void beginResponse(std::string_view statusLine);

    DownloadResponse response_;
    std::size_t length_ = 0;
};

/// The length that a response's fields announce for its body; -1 when they announce none.
[[nodiscard]] std::int64_t announcedLength(const DownloadResponse &response) noexcept;

} // namespace vant
