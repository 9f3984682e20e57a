#pragma once
#include "GNUstep/download/Poller.hpp"
#include "GNUstep/download/Transfer.hpp"

#include <curl/curl.h>
#include <map>
#include <memory>
#include <vector>

namespace vant {

/// Runs any number of downloads on one thread. It never waits: whoever owns it watches `descriptor`, and calls
/// `perform` when that is readable. All of its operations belong to the thread that made it.
class DownloadEngine {
public:
    DownloadEngine();
    DownloadEngine(const DownloadEngine &) = delete;
    DownloadEngine &operator=(const DownloadEngine &) = delete;
    ~DownloadEngine();

    /// Readable when there is something to do; one descriptor for all downloads, sockets and timers. Close-on-exec.
    [[nodiscard]] int descriptor() const noexcept { return poller_.descriptor(); }

    /// True while a download is neither finished, failed nor cancelled.
    [[nodiscard]] bool busy() const noexcept { return !transfers_.empty(); }

    /// Begins a download. The listener lives as long as the download runs; its first message comes from `perform`.
    std::shared_ptr<Transfer> start(DownloadRequest request, std::shared_ptr<DownloadListener> listener);

    void setDestination(Transfer &transfer, std::string path, Existing existing);

    /// Ends a download without a message.
    void cancel(Transfer &transfer);

    /// Ends every download without a message.
    void cancelAll();

    /// Moves what can be moved without waiting, for a bounded time, and tells the listeners. A listener may call it.
    void perform();

private:
    using Transfers = std::vector<std::shared_ptr<Transfer>>;

    static int onSocket(CURL *easy, curl_socket_t socket, int what, void *engine, void *perSocket);
    static int onTimer(CURLM *multi, long milliseconds, void *engine);
    void watch(CURL *easy, curl_socket_t socket, int what);
    void startSources();
    void startSource(Transfer &transfer);
    void transferData(Clock::time_point end);
    [[nodiscard]] bool resumeYielded();
    [[nodiscard]] bool serveSockets(Clock::time_point end);
    void startSlice();
    void socketAction(curl_socket_t socket, int what);
    void noteActivity(curl_socket_t socket);
    void extendDeadline(Clock::duration late);
    void runTimer();
    void collectFinished();
    void expireStalled();
    void notifyListeners();
    void updateAlarm();
    [[nodiscard]] Clock::time_point deadline() const;

    DownloadPoller poller_;
    CURLM *multi_;
    Clock::time_point libraryTimer_ = Clock::time_point::max();
    Slice slice_;
    Transfers transfers_;
    std::map<curl_socket_t, std::weak_ptr<Transfer>> sockets_;
};

} // namespace vant
