#include "GNUstep/download/Engine.hpp"

#include "GNUstep/download/Curl.hpp"
#include "GNUstep/download/Local.hpp"
#include "GNUstep/download/Names.hpp"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <mutex>
#include <set>

namespace vant {
namespace {

/// The longest that one turn moves data before the thread's other sources get theirs: half a frame of a smooth display.
constexpr auto passLength = std::chrono::milliseconds(8);
constexpr auto shortestSlice = std::chrono::microseconds(250);
/// As many downloads run at once; the others begin as these end, on their connections.
constexpr std::ptrdiff_t maxRunning = 32;
constexpr std::ptrdiff_t maxIdleConnections = 8;

std::set<int> openDescriptors() {
    std::set<int> numbers;
    for (const auto &entry : std::filesystem::directory_iterator("/proc/self/fd"))
        numbers.insert(std::atoi(entry.path().filename().c_str()));
    // The listing saw the descriptor by which it was read, whose number is free again.
    std::erase_if(numbers, [](int number) { return ::fcntl(number, F_GETFD) < 0; });
    return numbers;
}

/// The library makes the pair by which a multi handle is woken without the flag that keeps it from child processes, and
/// does not say which it is.
CURLM *newMulti() {
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
    const auto before = openDescriptors();
    CURLM *multi = curl_multi_init();
    for (const int number : openDescriptors())
        if (!before.contains(number))
            ::fcntl(number, F_SETFD, FD_CLOEXEC);
    return multi;
}

DownloadError errorForAddress(const std::string &address, const std::string &scheme, bool redirected) {
    if (address.empty())
        return DownloadError::badAddress;
    // A server has no say over this machine's own files.
    if (scheme == "file" && !redirected)
        return localPath(address) ? DownloadError::none : DownloadError::badAddress;
    if (scheme != "http" && scheme != "https" && scheme != "ftp")
        return DownloadError::unsupportedAddress;
    return addressHost(address).empty() ? DownloadError::badAddress : DownloadError::none;
}

} // namespace

DownloadEngine::DownloadEngine() : multi_(newMulti()) {
    curl_multi_setopt(multi_, CURLMOPT_SOCKETFUNCTION, &DownloadEngine::onSocket);
    curl_multi_setopt(multi_, CURLMOPT_SOCKETDATA, this);
    curl_multi_setopt(multi_, CURLMOPT_TIMERFUNCTION, &DownloadEngine::onTimer);
    curl_multi_setopt(multi_, CURLMOPT_TIMERDATA, this);
}

DownloadEngine::~DownloadEngine() {
    cancelAll();
    curl_multi_cleanup(multi_);
}

std::shared_ptr<Transfer> DownloadEngine::start(DownloadRequest request, std::shared_ptr<DownloadListener> listener) {
    auto transfer = std::make_shared<Transfer>(std::move(request), std::move(listener));
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
    // A listener may throw: what is still to be told must bring the next turn all the same.
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
    // Kept for those that follow while there are some, and given back as they become fewer.
    curl_multi_setopt(multi_, CURLMOPT_MAXCONNECTS, static_cast<long>(std::max(running, maxIdleConnections)));
}

void DownloadEngine::startSource(Transfer &transfer) {
    const auto &address = transfer.request().address;
    const auto scheme = addressScheme(address);
    if (const auto fault = errorForAddress(address, scheme, transfer.wasRedirected()); fault != DownloadError::none)
        transfer.finishSource(fault);
    else if (scheme == "file")
        transfer.setSource(std::make_unique<LocalSource>(*localPath(address), transfer, slice_));
    else
        transfer.setSource(std::make_unique<CurlSource>(multi_, transfer, slice_));
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
    // Every download with something to read is known to be alive before any of them is looked at.
    for (const auto &event : events)
        noteActivity(event.data.fd);
    for (const auto &event : events) {
        if (Clock::now() >= end)
            break;
        startSlice();
        socketAction(event.data.fd, ((event.events & (EPOLLIN | EPOLLHUP)) != 0 ? CURL_CSELECT_IN : 0) |
                                        ((event.events & EPOLLOUT) != 0 ? CURL_CSELECT_OUT : 0) |
                                        ((event.events & EPOLLERR) != 0 ? CURL_CSELECT_ERR : 0));
    }
    return !events.empty();
}

void DownloadEngine::startSlice() {
    const auto count = static_cast<int>(std::max<std::size_t>(transfers_.size(), 1));
    slice_.end = Clock::now() + std::max<Clock::duration>(passLength / count, shortestSlice);
}

void DownloadEngine::socketAction(curl_socket_t socket, int what) {
    int running = 0;
    curl_multi_socket_action(multi_, socket, what, &running);
}

void DownloadEngine::noteActivity(curl_socket_t socket) {
    if (const auto found = sockets_.find(socket); found != sockets_.end())
        if (const auto transfer = found->second.lock())
            transfer->noteActivity(Clock::now());
}

void DownloadEngine::extendDeadline(Clock::duration late) {
    // So long the thread was busy with something else: that is no silence of the servers'.
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
    while (const CURLMsg *message = curl_multi_info_read(multi_, &left)) {
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
    // The library's own pairs, by which a name look-up wakes it, are made without the flag.
    ::fcntl(socket, F_SETFD, FD_CLOEXEC);
    poller_.watch(socket, ((what & CURL_POLL_IN) != 0 ? EPOLLIN : 0U) | ((what & CURL_POLL_OUT) != 0 ? EPOLLOUT : 0U));
    sockets_[socket] = CurlSource::transferForHandle(easy)->weak_from_this();
}

int DownloadEngine::onTimer(CURLM * /*multi*/, long milliseconds, void *engine) {
    auto &self = *static_cast<DownloadEngine *>(engine);
    self.libraryTimer_ =
        milliseconds < 0 ? Clock::time_point::max() : Clock::now() + std::chrono::milliseconds(milliseconds);
    return 0;
}

} // namespace vant
