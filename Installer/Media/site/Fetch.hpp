#pragma once
#include "GNUstep/download/Errors.hpp"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace vant::media {

/// What a server may ask of somebody who fetches from it.
struct FetchLimits {
    double wait = 60;                               ///< seconds; in as many it has to send 1,000 bytes a second
    std::uint64_t largest = std::uint64_t{4} << 30; ///< bytes of one answer
};

struct FetchOrder {
    std::string address;
    std::string file; ///< to be written; must not exist
};

/// What came of one order. The file is there when `fault` is None.
struct Fetched {
    enum class Fault {
        None,
        Failed,   ///< for `error`
        TooSlow,  ///< fewer bytes a second than the limits ask for
        TooLarge, ///< more bytes than the limits allow, sent or announced
    };
    Fault fault = Fault::None;
    DownloadError error = DownloadError::none;
    std::vector<std::string> redirects; ///< addresses that led further
    int status = 0;                     ///< 0 for protocols without one
    std::string mediaType;
    std::string encoding;        ///< the answer's Content-Encoding
    std::int64_t announced = -1; ///< bytes; -1 for none
    std::uint64_t received = 0;  ///< bytes, decoded
};

/// Whether the server sent what was asked for: no fault, and a status that says so.
[[nodiscard]] bool hasArrived(const Fetched &fetched) noexcept;

/// Told how far things are: orders done, bytes so far.
using FetchProgress = std::function<void(std::size_t done, std::uint64_t bytes)>;

/// Fetches all orders, some of them at a time, by the requests and rules of the pane's downloads. Throws
/// std::runtime_error when this process is asked to end meanwhile. Main thread.
[[nodiscard]] std::vector<Fetched> fetch(std::span<const FetchOrder> orders, const FetchLimits &limits,
                                         const FetchProgress &progress);

/// A clause for an error: "the host name is not known".
[[nodiscard]] std::string errorWords(DownloadError error);

} // namespace vant::media
