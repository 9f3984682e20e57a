#include "URLDownloadEngine.hpp"

#include "URLDownloadCurl.hpp"
#include "URLDownloadNames.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <mutex>
#include <set>
#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace vant {
namespace {

/// The longest that one turn moves data before the thread's other sources get theirs: half a frame of a smooth display.
constexpr auto turnLength = std::chrono::milliseconds(8);
constexpr long mostIdleConnections = 8;
constexpr std::size_t mostEvents = 256;

void prepareLibrary() {
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

std::set<int> openDescriptors() {
    std::set<int> numbers;
    for (const auto &entry : std::filesystem::directory_iterator("/proc/self/fd"))
        numbers.insert(std::atoi(entry.path().filename().c_str()));
    return numbers;
}

/// The library makes the pair by which a multi handle is woken without the flag that keeps it from child processes, and
/// does not say which it is.
CURLM *newMulti() {
    const auto before = openDescriptors();
    CURLM *multi = curl_multi_init();
    for (const int number : openDescriptors())
        if (!before.contains(number))
            ::fcntl(number, F_SETFD, FD_CLOEXEC);
    return multi;
}

DownloadError faultOf(const std::string &address) {
    if (address.empty())
        return DownloadError::badAddress;
    const auto scheme = schemeOf(address);
    if (scheme != "http" && scheme != "https" && scheme != "ftp")
        return DownloadError::unsupportedAddress;
    return hostOf(address).empty() ? DownloadError::badAddress : DownloadError::none;
}

} // namespace

DownloadEngine::DownloadEngine() {
    prepareLibrary();
    multi_ = newMulti();
    curl_multi_setopt(multi_, CURLMOPT_SOCKETFUNCTION, &DownloadEngine::onSocket);
    curl_multi_setopt(multi_, CURLMOPT_SOCKETDATA, this);
    curl_multi_setopt(multi_, CURLMOPT_TIMERFUNCTION, &DownloadEngine::onTimer);
    curl_multi_setopt(multi_, CURLMOPT_TIMERDATA, this);
    curl_multi_setopt(multi_, CURLMOPT_MAXCONNECTS, mostIdleConnections);
    poller_ = ::epoll_create1(EPOLL_CLOEXEC);
    timer_ = ::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK);
    epoll_event event{.events = EPOLLIN, .data = {.fd = timer_}};
    ::epoll_ctl(poller_, EPOLL_CTL_ADD, timer_, &event);
}

DownloadEngine::~DownloadEngine() {
    cancelAll();
    curl_multi_cleanup(multi_);
    ::close(timer_);
    ::close(poller_);
}

std::shared_ptr<Transfer> DownloadEngine::start(DownloadRequest request, std::shared_ptr<DownloadListener> listener) {
    auto transfer = std::make_shared<Transfer>(std::move(request), std::move(listener));
    transfers_.push_back(transfer);
    beginSource(*transfer);
    rearm();
    return transfer;
}

void DownloadEngine::setDestination(Transfer &transfer, std::string path, Existing existing) {
    transfer.setDestination(std::move(path), existing);
    rearm();
}

void DownloadEngine::cancel(Transfer &transfer) {
    transfer.cancel();
    sweep();
}

void DownloadEngine::cancelAll() {
    for (const auto &transfer : Transfers(transfers_))
        transfer->cancel();
    sweep();
}

void DownloadEngine::beginSource(Transfer &transfer) {
    if (const auto fault = faultOf(transfer.request().address); fault != DownloadError::none)
        return transfer.sourceEnded(fault);
    transfer.setSource(std::make_unique<CurlSource>(multi_, transfer, slice_));
}

void DownloadEngine::turn() {
    // A listener may throw: what is still to be told must bring the next turn all the same.
    struct Rearm {
        DownloadEngine &engine;
        ~Rearm() { engine.rearm(); }
    } const rearmAtEnd{*this};
    moveData(Clock::now() + turnLength);
    runTimer();
    collectEnded();
    expire();
    tell();
    for (const auto &transfer : Transfers(transfers_))
        if (transfer->wantsSource())
            beginSource(*transfer);
    sweep();
}

void DownloadEngine::moveData(Clock::time_point end) {
    bool moved = true;
    while (moved && Clock::now() < end) {
        moved = moveYielded();
        moved = moveReady() || moved;
        collectEnded();
    }
}

void DownloadEngine::beginSlice() {
    slice_.end = Clock::now() + turnLength / static_cast<int>(std::max<std::size_t>(transfers_.size(), 1));
}

bool DownloadEngine::moveYielded() {
    bool moved = false;
    for (const auto &transfer : Transfers(transfers_)) {
        if (!transfer->yielded())
            continue;
        beginSlice();
        transfer->proceed();
        int running = 0;
        curl_multi_socket_action(multi_, CURL_SOCKET_TIMEOUT, 0, &running);
        moved = true;
    }
    return moved;
}

bool DownloadEngine::moveReady() {
    std::array<epoll_event, mostEvents> events;
    const int count = ::epoll_wait(poller_, events.data(), mostEvents, 0);
    allSeen_ = count < static_cast<int>(mostEvents);
    bool moved = false;
    // Every download with something to read is known to be alive before any of them is looked at.
    for (int i = 0; i < count; ++i)
        if (const auto found = sockets_.find(events[static_cast<std::size_t>(i)].data.fd); found != sockets_.end())
            if (const auto transfer = found->second.lock())
                transfer->touch(Clock::now());
    for (int i = 0; i < count; ++i) {
        const auto &event = events[static_cast<std::size_t>(i)];
        if (event.data.fd == timer_)
            continue;
        const int what = ((event.events & (EPOLLIN | EPOLLHUP)) != 0 ? CURL_CSELECT_IN : 0) |
                         ((event.events & EPOLLOUT) != 0 ? CURL_CSELECT_OUT : 0) |
                         ((event.events & EPOLLERR) != 0 ? CURL_CSELECT_ERR : 0);
        int running = 0;
        beginSlice();
        curl_multi_socket_action(multi_, event.data.fd, what, &running);
        moved = true;
    }
    return moved;
}

void DownloadEngine::runTimer() {
    if (const auto late = Clock::now() - armed_; late >= Clock::duration::zero()) {
        // The thread was busy with something else: that is no silence of the servers'.
        for (const auto &transfer : transfers_)
            transfer->excuse(late, Clock::now());
        std::uint64_t expirations = 0;
        if (::read(timer_, &expirations, sizeof expirations) < 0 && errno != EAGAIN)
            return;
        armed_ = Clock::time_point::max();
    }
    for (int i = 0; i < 4 && libraryTimer_ <= Clock::now(); ++i) {
        int running = 0;
        beginSlice();
        libraryTimer_ = Clock::time_point::max();
        curl_multi_socket_action(multi_, CURL_SOCKET_TIMEOUT, 0, &running);
    }
}

void DownloadEngine::collectEnded() {
    int left = 0;
    while (const CURLMsg *message = curl_multi_info_read(multi_, &left)) {
        if (message->msg != CURLMSG_DONE)
            continue;
        CURL *const easy = message->easy_handle;
        const auto error = CurlSource::errorOf(easy, message->data.result);
        CurlSource::transferOf(easy)->sourceEnded(error);
    }
}

void DownloadEngine::expire() {
    if (!allSeen_)
        return;
    for (const auto &transfer : transfers_)
        transfer->expire(Clock::now());
}

void DownloadEngine::tell() {
    for (const auto &transfer : Transfers(transfers_))
        while (transfer->hasMessage(Clock::now()))
            transfer->tellNext(Clock::now());
}

void DownloadEngine::sweep() {
    std::erase_if(transfers_, [](const auto &transfer) { return transfer->over(); });
}

Clock::time_point DownloadEngine::deadline() const {
    auto earliest = libraryTimer_;
    const auto now = Clock::now();
    for (const auto &transfer : transfers_)
        earliest = std::min(earliest, transfer->wantsTurn(now) ? now : transfer->deadline());
    return earliest;
}

void DownloadEngine::rearm() {
    const auto next = deadline();
    // A timer that goes off early costs one turn; setting it anew for every piece of data would cost a call each.
    if (next >= armed_)
        return;
    armed_ = next;
    const auto wait = std::max<Clock::duration>(next - Clock::now(), std::chrono::nanoseconds(1));
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(wait);
    itimerspec setting{};
    setting.it_value.tv_sec = seconds.count();
    setting.it_value.tv_nsec = std::chrono::nanoseconds(wait - seconds).count();
    ::timerfd_settime(timer_, 0, &setting, nullptr);
}

int DownloadEngine::onSocket(CURL *easy, curl_socket_t socket, int what, void *engine, void * /*perSocket*/) {
    static_cast<DownloadEngine *>(engine)->watch(easy, socket, what);
    return 0;
}

void DownloadEngine::watch(CURL *easy, curl_socket_t socket, int what) {
    if (what == CURL_POLL_REMOVE) {
        ::epoll_ctl(poller_, EPOLL_CTL_DEL, socket, nullptr);
        sockets_.erase(socket);
        return;
    }
    // The library's own pairs, by which a name look-up wakes it, are made without the flag.
    ::fcntl(socket, F_SETFD, FD_CLOEXEC);
    epoll_event event{};
    event.events = ((what & CURL_POLL_IN) != 0 ? EPOLLIN : 0U) | ((what & CURL_POLL_OUT) != 0 ? EPOLLOUT : 0U);
    event.data.fd = socket;
    if (::epoll_ctl(poller_, EPOLL_CTL_MOD, socket, &event) != 0)
        ::epoll_ctl(poller_, EPOLL_CTL_ADD, socket, &event);
    sockets_[socket] = CurlSource::transferOf(easy)->weak_from_this();
}

int DownloadEngine::onTimer(CURLM * /*multi*/, long milliseconds, void *engine) {
    auto &self = *static_cast<DownloadEngine *>(engine);
    self.libraryTimer_ =
        milliseconds < 0 ? Clock::time_point::max() : Clock::now() + std::chrono::milliseconds(milliseconds);
    return 0;
}

} // namespace vant
