#include "GNUstep/download/Transfer.hpp"

#include <algorithm>
#include <utility>

namespace vant {
namespace {

constexpr std::size_t maxDiscarded = 64UL * 1024;
constexpr double defaultTimeOut = 60;
/// Lengths are reported at most this often: a bar moves no smoother, and a fast server would keep the thread busy.
constexpr auto reportInterval = std::chrono::milliseconds(20);

Clock::duration timeOutInterval(const DownloadRequest &request) {
    const double seconds = request.timeOut > 0 ? std::min(request.timeOut, 1e9) : defaultTimeOut;
    return std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
}

} // namespace

Transfer::Transfer(DownloadRequest request, std::shared_ptr<DownloadListener> listener, const Slice &slice)
    : request_(std::move(request)), listener_(std::move(listener)), body_(slice), lastActivity_(Clock::now()) {}

void Transfer::receiveResponse(DownloadResponse response) {
    if (gate_ == Gate::discarding)
        return;
    response_ = std::move(response);
    auto &waiting = response_.redirect() ? stage_.redirectPending : stage_.responsePending;
    waiting = true;
}

Transfer::Receipt Transfer::receive(std::string_view bytes) {
    switch (gate_) {
    case Gate::held:
        holding_ = true;
        return Receipt::paused;
    case Gate::discarding:
        discarded_ += bytes.size();
        return discarded_ > maxDiscarded ? Receipt::rejected : Receipt::accepted;
    case Gate::open:
        return store(bytes);
    }
    return Receipt::rejected;
}

Transfer::Receipt Transfer::store(std::string_view bytes) {
    if (body_.isDecoding())
        return Receipt::paused;
    reject(body_.receive(bytes));
    return error_ == DownloadError::none ? Receipt::accepted : Receipt::rejected;
}

void Transfer::reject(DownloadError error) noexcept {
    if (error_ == DownloadError::none)
        error_ = error;
}

void Transfer::finishSource(DownloadError error) {
    source_.reset();
    holding_ = false;
    if (gate_ == Gate::discarding) {
        sourcePending_ = true;
        gate_ = Gate::held;
        return;
    }
    reject(error);
    sourceEnded_ = true;
    // What has arrived may still wait to be decoded, in slices of its own.
    if (error_ != DownloadError::none || !isDecoding())
        finishBody();
}

void Transfer::finishBody() {
    if (error_ == DownloadError::none && response_.address != request_.address) {
        DownloadResponse response;
        response.address = request_.address;
        receiveResponse(std::move(response));
    }
    reject(body_.checkEnd());
    // A redirect without a body ends before it was delivered: the listener's answer decides what happens next.
    if (error_ == DownloadError::none && stage_.redirectPending)
        return;
    end(error_);
}

void Transfer::end(DownloadError error) {
    source_.reset();
    error_ = error;
    stage_.redirectPending = stage_.redirectPending && error == DownloadError::none;
    if (error_ == DownloadError::none && body_.file().created())
        error_ = body_.file().close();
    stage_.ended = true;
    stage_.failed = error_ != DownloadError::none;
}

DownloadStage Transfer::stageAt(Clock::time_point now) const noexcept {
    DownloadStage stage = stage_;
    stage.destinationKnown = !destination_.empty();
    stage.fileMade = body_.file().created();
    stage.dataPending = body_.hasUnreported();
    stage.dataDue = now - lastReport_ >= reportInterval;
    return stage;
}

bool Transfer::hasMessage(Clock::time_point now) const noexcept {
    return !isFinished() && !muted_ && nextMessage(stageAt(now)) != DownloadMessage::none;
}

bool Transfer::isRunnable(Clock::time_point now) const noexcept {
    return hasMessage(now) || yielded();
}

Clock::time_point Transfer::deadline() const noexcept {
    auto earliest = Clock::time_point::max();
    if (body_.hasUnreported())
        earliest = lastReport_ + reportInterval;
    if (canExpire())
        earliest = std::min(earliest, lastActivity_ + timeOutInterval(request_));
    return earliest;
}

void Transfer::expire(Clock::time_point now) {
    if (canExpire() && now - lastActivity_ >= timeOutInterval(request_))
        end(DownloadError::timedOut);
}

void Transfer::setSource(std::unique_ptr<DownloadSource> source) {
    sourcePending_ = false;
    source_ = std::move(source);
    lastActivity_ = Clock::now();
}

void Transfer::release(Gate gate) {
    gate_ = gate;
    holding_ = false;
    proceed();
}

void Transfer::proceed() {
    lastActivity_ = Clock::now();
    if (isDecoding() && !finishDecoding())
        return;
    if (!source_)
        return;
    const auto failure = source_->resume();
    if (failure != DownloadError::none || source_->ended())
        finishSource(failure);
}

bool Transfer::finishDecoding() {
    reject(body_.decode());
    if (error_ != DownloadError::none) {
        end(error_);
        return false;
    }
    const bool isDone = !isDecoding();
    if (isDone && sourceEnded_)
        finishBody();
    return isDone;
}

void Transfer::setDestination(std::string path, Existing existing) {
    if (!destination_.empty() || path.empty())
        return;
    destination_ = std::move(path);
    existing_ = existing;
}

void Transfer::cancel() {
    if (isFinished())
        return;
    listener_.reset();
    source_.reset();
    body_.file().remove();
}

} // namespace vant
