#pragma once
#include "GNUstep/download/Multi.hpp"
#include "GNUstep/download/Poller.hpp"
#include "GNUstep/download/Transfer.hpp"

#include <curl/curl.h>
#include <map>
#include <memory>
#include <vector>

namespace vant {

/// Runs any number of downloads on one thread. Whoever owns it watches `descriptor`, or waits by `wait`, and calls
/// `perform` when there is work; nothing but `wait` waits. All of its operations belong to the thread that made it.
class DownloadEngine {
public:
    DownloadEngine() = default;
    DownloadEngine(const DownloadEngine &) = delete;
    DownloadEngine &operator=(const DownloadEngine &) = delete;
    ~DownloadEngine();

    /// Readable when there is work; one descriptor for all downloads, sockets and timers. Close-on-exec.
    [[nodiscard]] int descriptor() const noexcept { return poller_.descriptor(); }

    /// Until there is work, a signal comes, or this much time has passed.
    void wait(std::chrono::milliseconds most) noexcept { poller_.wait(most); }

    /// True while a download is neither finished, failed nor cancelled.
    [[nodiscard]] bool busy() const noexcept { return !transfers_.empty(); }

    /// Starts a download. The listener is kept while it runs; its first message comes from `perform`.
    std::shared_ptr<Transfer> start(DownloadRequest request, std::shared_ptr<DownloadListener> listener);

    /// Sets the file to write, if none was set before.
    void setDestination(Transfer &transfer, std::string path, Existing existing);

    /// Ends a download without a message.
    void cancel(Transfer &transfer);

    /// Ends every download without a message.
    void cancelAll();

    /// Transfers what can be transferred without waiting, for a bounded time, and calls the listeners. A listener may
    /// call it again. After the last download's end no connection stays open.
    void perform();

private:
    using Transfers = std::vector<std::shared_ptr<Transfer>>;

    static int onSocket(CURL *easy, curl_socket_t socket, int what, void *engine, void *perSocket);
    static int onTimer(CURLM *multi, long milliseconds, void *engine);
    void watch(CURL *easy, curl_socket_t socket, int what);
    [[nodiscard]] CURLM *multi();
    void closeConnections();
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
    Clock::time_point libraryTimer_ = Clock::time_point::max();
    Slice slice_;
    std::map<curl_socket_t, std::weak_ptr<Transfer>> sockets_;
    /// Exists while downloads run. Its end calls back into what is declared above it.
    MultiHandle multi_;
    Transfers transfers_;
};

} // namespace vant
