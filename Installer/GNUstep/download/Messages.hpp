#pragma once
#include "GNUstep/download/Errors.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vant {

/// A field of a request's or a response's header.
struct HeaderField {
    std::string name;
    std::string value;
};

/// A download's request. Fields are sent as they stand; a time-out in seconds, 60 when zero or negative.
struct DownloadRequest {
    std::string address;
    std::string method = "GET";
    std::vector<HeaderField> fields;
    std::string body;
    double timeOut = 60;
};

/// The server's response. `status` is 0 for protocols without status codes, `expectedLength` -1 when unknown.
struct DownloadResponse {
    std::string address;
    int status = 0;
    std::string version;
    std::vector<HeaderField> fields;
    std::int64_t expectedLength = -1;

    /// The value of a field, whatever the case of its name; empty when it is absent.
    [[nodiscard]] std::string_view field(std::string_view name) const noexcept;

    /// The file name that the server or the address suggests.
    [[nodiscard]] std::string suggestedName() const;

    /// The body's media type, without parameters; "application/octet-stream" when the server did not say.
    [[nodiscard]] std::string_view mediaType() const noexcept;

    /// The target of a redirect; nothing for any other response, or without a usable target.
    [[nodiscard]] std::optional<std::string> redirect() const;
};

/// The request that follows a redirect, as browsers make it: a POST becomes a GET, after a 303 every method but HEAD
/// does, and credentials are dropped for another host.
[[nodiscard]] DownloadRequest redirected(const DownloadRequest &request, int status, std::string target);

/// Receives a download's messages. Each comes from the engine's `perform`, never from inside another of its operations,
/// and may start or cancel downloads, set destinations, or run `perform` again.
class DownloadListener {
public:
    virtual ~DownloadListener() = default;
    virtual void didBegin() = 0;
    /// The request to continue with; nothing makes the redirect itself the response.
    virtual std::optional<DownloadRequest> willRedirect(const DownloadRequest &proposed,
                                                        const DownloadResponse &by) = 0;
    virtual void didReceiveResponse(const DownloadResponse &response) = 0;
    virtual void decideDestination(const std::string &suggestedName) = 0;
    virtual void didCreateDestination(const std::string &path) = 0;
    virtual void didReceiveData(std::size_t length) = 0;
    virtual void didFinish() = 0;
    virtual void didFail(DownloadError error, const std::string &address) = 0;
};

/// The messages of a listener.
enum class DownloadMessage { none, begin, redirect, response, decide, create, data, finish, fail };

/// The state of a download that decides its next message.
struct DownloadStage {
    bool begun = false;             ///< `begin` was delivered.
    bool redirectPending = false;   ///< A redirect is to be delivered.
    bool responsePending = false;   ///< A response is to be delivered.
    bool responseDelivered = false; ///< It was, and its body may be received.
    bool decisionAsked = false;     ///< The listener was asked for a destination.
    bool destinationKnown = false;  ///< There is one, from whomever.
    bool fileMade = false;          ///< The file exists.
    bool dataPending = false;       ///< Bytes were written and not yet reported.
    bool dataDue = false;           ///< Enough time has passed to report them.
    bool ended = false;             ///< No more bytes will come.
    bool failed = false;            ///< It ended without the whole file.
};

/// The next delegate message, in the platform's order; exactly one terminal message, right after the last data.
[[nodiscard]] DownloadMessage nextMessage(const DownloadStage &stage) noexcept;

} // namespace vant
