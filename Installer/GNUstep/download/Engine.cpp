#include "GNUstep/download/Engine.hpp"

#include "GNUstep/download/Address.hpp"
#include "GNUstep/download/Curl.hpp"
#include "GNUstep/download/Local.hpp"

#include <algorithm>
#include <fcntl.h>

namespace vant {
namespace {

/// The longest that one pass transfers data before the thread's other sources are served: half a display frame.
constexpr auto passLength = std::chrono::milliseconds(8);
constexpr auto shortestSlice = std::chrono::microseconds(250);
/// Downloads beyond these begin as others end, on their connections.
constexpr std::ptrdiff_t maxRunning = 32;
constexpr std::ptrdiff_t maxIdleConnections = 8;

} // namespace

DownloadEngine::~DownloadEngine() {
    cancelAll();
}

std::shared_ptr<Transfer> DownloadEngine::start(DownloadRequest request, std::shared_ptr<DownloadListener> listener) {
    auto transfer = std::make_shared<Transfer>(std::move(request), std::move(listener), slice_);
    transfers_.push_back(transfer);
    updateAlarm();
    return transfer;
}

void DownloadEngine::setDestination(Transfer &transfer, std::string path, Existing existing) {
    transfer.setDestination(std::move(path), existing);
    updateAlarm();
}

void DownloadEngine::cancel(Transfer &transfer) {
    transfer.cancel();
    updateAlarm();
}

void DownloadEngine::cancelAll() {
    for (const auto &transfer : Transfers(transfers_))
        transfer->cancel();
    updateAlarm();
}

void DownloadEngine::perform() {
    // A listener may throw: messages still due must bring the next pass all the same.
    struct AlarmUpdate {
        DownloadEngine &engine;
        ~AlarmUpdate() { engine.updateAlarm(); }
    } const atEnd{*this};
    extendDeadline(poller_.takeAlarm(Clock::now()));
    const auto end = Clock::now() + passLength;
    do {
        transferData(end);
        runTimer();
        collectFinished();
        expireStalled();
        notifyListeners();
        startSources();
    } while (deadline() <= Clock::now() && Clock::now() < end);
}

void DownloadEngine::updateAlarm() {
    std::erase_if(transfers_, [](const auto &transfer) { return transfer->isFinished(); });
    startSources();
    poller_.alarmAt(deadline());
    if (transfers_.empty())
        closeConnections();
}

CURLM *DownloadEngine::multi() {
    if (!multi_) {
        multi_ = makeMultiHandle();
        curl_multi_setopt(multi_.get(), CURLMOPT_SOCKETFUNCTION, &DownloadEngine::onSocket);
        curl_multi_setopt(multi_.get(), CURLMOPT_SOCKETDATA, this);
        curl_multi_setopt(multi_.get(), CURLMOPT_TIMERFUNCTION, &DownloadEngine::onTimer);
        curl_multi_setopt(multi_.get(), CURLMOPT_TIMERDATA, this);
    }
    return multi_.get();
}

void DownloadEngine::closeConnections() {
    multi_.reset();
    sockets_.clear();
    libraryTimer_ = Clock::time_point::max();
}

void DownloadEngine::startSources() {
    auto running = std::ranges::count_if(transfers_, [](const auto &transfer) { return transfer->hasSource(); });
    for (const auto &transfer : Transfers(transfers_)) {
        if (running >= maxRunning)
            break;
        if (!transfer->needsSource())
            continue;
        startSource(*transfer);
        running += transfer->hasSource() ? 1 : 0;
    }
    // Idle connections serve the downloads that follow, and are closed as those become fewer.
    if (multi_)
        curl_multi_setopt(multi_.get(), CURLMOPT_MAXCONNECTS, static_cast<long>(std::max(running, maxIdleConnections)));
}

void DownloadEngine::startSource(Transfer &transfer) {
    const auto &address = transfer.request().address;
    if (const auto error = errorForAddress(address); error != DownloadError::none)
        transfer.finishSource(error);
    else if (addressScheme(address) == "file")
        transfer.setSource(std::make_unique<LocalSource>(*localPath(address), transfer, slice_));
    else
        transfer.setSource(std::make_unique<CurlSource>(multi(), transfer, slice_));
}

void DownloadEngine::transferData(Clock::time_point end) {
    bool moved = true;
    while (moved && Clock::now() < end) {
        moved = resumeYielded();
        moved = serveSockets(end) || moved;
        collectFinished();
    }
}

bool DownloadEngine::resumeYielded() {
    bool moved = false;
    for (const auto &transfer : Transfers(transfers_)) {
        if (!transfer->yielded())
            continue;
        startSlice();
        transfer->proceed();
        socketAction(CURL_SOCKET_TIMEOUT, 0);
        moved = true;
    }
    return moved;
}

bool DownloadEngine::serveSockets(Clock::time_point end) {
    const auto events = poller_.ready();
    // All downloads with something to read count as active before time is spent on any of them.
    for (const auto &event : events)
        noteActivity(event.socket);
    for (const auto &event : events) {
        if (Clock::now() >= end)
            break;
        startSlice();
        socketAction(event.socket, (event.reading ? CURL_CSELECT_IN : 0) | (event.writing ? CURL_CSELECT_OUT : 0) |
                                       (event.failed ? CURL_CSELECT_ERR : 0));
    }
    return !events.empty();
}

void DownloadEngine::startSlice() {
    const auto count = static_cast<int>(std::max<std::size_t>(transfers_.size(), 1));
    slice_.end = Clock::now() + std::max<Clock::duration>(passLength / count, shortestSlice);
}

void DownloadEngine::socketAction(curl_socket_t socket, int what) {
    int running = 0;
    if (multi_)
        curl_multi_socket_action(multi_.get(), socket, what, &running);
}

void DownloadEngine::noteActivity(curl_socket_t socket) {
    if (const auto found = sockets_.find(socket); found != sockets_.end())
        if (const auto transfer = found->second.lock())
            transfer->noteActivity(Clock::now());
}

void DownloadEngine::extendDeadline(Clock::duration late) {
    // The thread was busy elsewhere for this long; don't count it as server inactivity.
    for (const auto &transfer : transfers_)
        transfer->extendDeadline(late, Clock::now());
}

void DownloadEngine::runTimer() {
    if (libraryTimer_ > Clock::now())
        return;
    libraryTimer_ = Clock::time_point::max();
    startSlice();
    socketAction(CURL_SOCKET_TIMEOUT, 0);
}

void DownloadEngine::collectFinished() {
    int left = 0;
    while (const CURLMsg *message = multi_ ? curl_multi_info_read(multi_.get(), &left) : nullptr) {
        if (message->msg != CURLMSG_DONE)
            continue;
        CURL *const easy = message->easy_handle;
        const auto error = CurlSource::errorForHandle(easy, message->data.result);
        CurlSource::transferForHandle(easy)->finishSource(error);
    }
}

void DownloadEngine::expireStalled() {
    if (poller_.hasMore())
        return;
    for (const auto &transfer : transfers_)
        transfer->expire(Clock::now());
}

void DownloadEngine::notifyListeners() {
    for (const auto &transfer : Transfers(transfers_)) {
        startSlice();
        while (transfer->hasMessage(Clock::now()))
            transfer->deliverNextMessage(Clock::now());
    }
}

Clock::time_point DownloadEngine::deadline() const {
    auto earliest = libraryTimer_;
    const auto now = Clock::now();
    for (const auto &transfer : transfers_)
        earliest = std::min(earliest, transfer->isRunnable(now) ? now : transfer->deadline());
    return earliest;
}

int DownloadEngine::onSocket(CURL *easy, curl_socket_t socket, int what, void *engine, void * /*perSocket*/) {
    static_cast<DownloadEngine *>(engine)->watch(easy, socket, what);
    return 0;
}

void DownloadEngine::watch(CURL *easy, curl_socket_t socket, int what) {
    if (what == CURL_POLL_REMOVE) {
        poller_.forget(socket);
        sockets_.erase(socket);
        return;
    }
    // The socket pairs of the library's resolver are created without close-on-exec.
    ::fcntl(socket, F_SETFD, FD_CLOEXEC);
    poller_.watch({.socket = socket, .reading = (what & CURL_POLL_IN) != 0, .writing = (what & CURL_POLL_OUT) != 0});
    sockets_[socket] = CurlSource::transferForHandle(easy)->weak_from_this();
}

int DownloadEngine::onTimer(CURLM * /*multi*/, long milliseconds, void *engine) {
    auto &self = *static_cast<DownloadEngine *>(engine);
    self.libraryTimer_ =
        milliseconds < 0 ? Clock::time_point::max() : Clock::now() + std::chrono::milliseconds(milliseconds);
    return 0;
}

} // namespace vant
