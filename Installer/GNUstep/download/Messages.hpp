#pragma once
#include "GNUstep/download/Errors.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vant {

struct HeaderField {
    std::string name;
    std::string value;
};

/// What is asked for. Fields are sent as they stand; a zero or negative time-out stands for the usual 60 seconds.
struct DownloadRequest {
    std::string address;
    std::string method = "GET";
    std::vector<HeaderField> fields;
    std::string body;
    double timeOut = 60;
};

/// What was answered. `status` is 0 for a protocol without one, `expectedLength` -1 when the server did not say.
struct DownloadResponse {
    std::string address;
    int status = 0;
    std::string version;
    std::vector<HeaderField> fields;
    std::int64_t expectedLength = -1;

    /// The value of a field, whatever the case of its name; empty when it is absent.
    [[nodiscard]] std::string_view field(std::string_view name) const noexcept;

    /// The name that the server or the address proposes for the file.
    [[nodiscard]] std::string suggestedName() const;

    /// The kind of the body, without parameters; "application/octet-stream" when the server did not say.
    [[nodiscard]] std::string_view mediaType() const noexcept;

    /// The address to go on to when this is a redirect with a usable target, else nothing.
    [[nodiscard]] std::optional<std::string> redirect() const;
};

/// The request that follows a redirect, as browsers do it: a form that was posted is fetched, a 303 always is, and
/// credentials stay with the host that they were meant for.
[[nodiscard]] DownloadRequest redirected(const DownloadRequest &request, int status, std::string target);

/// Who is told of a download. Each call comes from the engine's `perform`, never from inside another of its operations,
/// and may start, cancel or direct downloads, or run `perform` again.
class DownloadListener {
public:
    virtual ~DownloadListener() = default;
    virtual void didBegin() = 0;
    /// The request to go on with; nothing makes the redirect itself the answer.
    virtual std::optional<DownloadRequest> willRedirect(const DownloadRequest &proposed,
                                                        const DownloadResponse &by) = 0;
    virtual void didReceiveResponse(const DownloadResponse &response) = 0;
    virtual void decideDestination(const std::string &suggestedName) = 0;
    virtual void didCreateDestination(const std::string &path) = 0;
    virtual void didReceiveData(std::size_t length) = 0;
    virtual void didFinish() = 0;
    virtual void didFail(DownloadError error, const std::string &address) = 0;
};

enum class DownloadMessage { none, begin, redirect, response, decide, create, data, finish, fail };

/// How far a download is, as far as its messages are concerned.
struct DownloadStage {
    bool begun = false;             ///< `begin` was told.
    bool redirectPending = false;   ///< A redirect is to be put to the listener.
    bool responsePending = false;   ///< A response is to be told.
    bool responseDelivered = false; ///< It was, and its body may be taken.
    bool decisionAsked = false;     ///< The listener was asked for a destination.
    bool destinationKnown = false;  ///< There is one, from whomever.
    bool fileMade = false;          ///< The file exists.
    bool dataPending = false;       ///< Bytes were written that were not told.
    bool dataDue = false;           ///< Enough time has gone by to tell them.
    bool ended = false;             ///< No more bytes will come.
    bool failed = false;            ///< It ended without the whole file.
};

/// What is to be told next: the platform's order, one terminal message, and nothing between it and the last data.
[[nodiscard]] DownloadMessage nextMessage(const DownloadStage &stage) noexcept;

} // namespace vant
