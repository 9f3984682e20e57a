#include "GNUstep/download/Transfer.hpp"

#include <algorithm>
#include <utility>

namespace vant {
namespace {

constexpr int maxRedirects = 20;
constexpr std::size_t maxDiscarded = 64UL * 1024;
constexpr double defaultTimeOut = 60;
/// Lengths are told at most this often: a bar moves no smoother, and a fast server would keep the thread busy with it.
constexpr auto reportInterval = std::chrono::milliseconds(20);

Clock::duration timeOutInterval(const DownloadRequest &request) {
    const double seconds = request.timeOut > 0 ? std::min(request.timeOut, 1e9) : defaultTimeOut;
    return std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
}

} // namespace

Transfer::Transfer(DownloadRequest request, std::shared_ptr<DownloadListener> listener)
    : request_(std::move(request)), listener_(std::move(listener)), lastActivity_(Clock::now()) {}

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
    if (!decoder_)
        return write(bytes) ? Receipt::accepted : Receipt::rejected;
    const auto result = decoder_->decode(bytes, [this](std::string_view decoded) { return write(decoded); });
    if (result == ContentDecoder::Result::damaged)
        error_ = DownloadError::cannotDecode;
    return result == ContentDecoder::Result::taken ? Receipt::accepted : Receipt::rejected;
}

bool Transfer::write(std::string_view bytes) {
    error_ = file_.write(bytes);
    if (error_ != DownloadError::none)
        return false;
    unreported_ += bytes.size();
    return true;
}

void Transfer::finishSource(DownloadError error) {
    source_.reset();
    holding_ = false;
    if (gate_ == Gate::discarding) {
        sourcePending_ = true;
        gate_ = Gate::held;
        return;
    }
    if (error_ == DownloadError::none)
        error_ = error;
    if (error_ == DownloadError::none && response_.address != request_.address)
        receiveResponse({.address = request_.address});
    if (error_ == DownloadError::none && decoder_ && !decoder_->complete())
        error_ = DownloadError::cannotDecode;
    // A redirect without a body has ended before it could be put to the listener: its answer decides what happens next.
    if (error_ == DownloadError::none && stage_.redirectPending)
        return;
    end(error_);
}

void Transfer::end(DownloadError error) {
    source_.reset();
    error_ = error;
    stage_.redirectPending = stage_.redirectPending && error == DownloadError::none;
    if (error_ == DownloadError::none && file_.created())
        error_ = file_.close();
    stage_.ended = true;
    stage_.failed = error_ != DownloadError::none;
}

DownloadStage Transfer::stageAt(Clock::time_point now) const noexcept {
    DownloadStage stage = stage_;
    stage.destinationKnown = !destination_.empty();
    stage.fileMade = file_.created();
    stage.dataPending = unreported_ > 0;
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
    if (unreported_ > 0)
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

void Transfer::deliverNextMessage(Clock::time_point now) {
    const auto listener = listener_;
    if (listener == nullptr || muted_)
        return;
    switch (nextMessage(stageAt(now))) {
    case DownloadMessage::none:
        return;
    case DownloadMessage::begin:
        stage_.begun = true;
        return listener->didBegin();
    case DownloadMessage::redirect:
        return deliverRedirect();
    case DownloadMessage::response:
        return deliverResponse();
    case DownloadMessage::decide:
        stage_.decisionAsked = true;
        return listener->decideDestination(response_.suggestedName());
    case DownloadMessage::create:
        return createFile();
    case DownloadMessage::data:
        return deliverData(now);
    case DownloadMessage::finish:
    case DownloadMessage::fail:
        return deliverEnd();
    }
}

void Transfer::deliverRedirect() {
    const auto listener = listener_;
    stage_.redirectPending = false;
    if (++redirects_ > maxRedirects)
        return end(DownloadError::tooManyRedirects);
    const auto proposed = redirected(request_, response_.status, response_.redirect().value_or(""));
    auto next = listener->willRedirect(proposed, response_);
    if (isFinished())
        return;
    if (!next) {
        stage_.responsePending = true;
        if (!source_)
            end(DownloadError::none);
        return;
    }
    request_ = *std::move(next);
    discarded_ = 0;
    if (source_)
        return release(Gate::discarding);
    sourcePending_ = true;
}

void Transfer::deliverResponse() {
    const auto listener = listener_;
    stage_.responsePending = false;
    stage_.responseDelivered = true;
    if (ContentDecoder::isSupported(response_.field("Content-Encoding")))
        decoder_ = std::make_unique<ContentDecoder>();
    listener->didReceiveResponse(response_);
}

void Transfer::createFile() {
    const auto listener = listener_;
    const auto failure = file_.create(destination_, existing_);
    if (failure != DownloadError::none)
        return end(failure);
    release(Gate::open);
    if (stage_.ended && !stage_.failed)
        end(DownloadError::none);
    listener->didCreateDestination(file_.path());
}

void Transfer::release(Gate gate) {
    gate_ = gate;
    holding_ = false;
    proceed();
}

void Transfer::proceed() {
    lastActivity_ = Clock::now();
    if (!source_)
        return;
    const auto failure = source_->resume();
    if (failure != DownloadError::none || source_->ended())
        finishSource(failure);
}

void Transfer::deliverData(Clock::time_point now) {
    lastReport_ = now;
    listener_->didReceiveData(std::exchange(unreported_, 0));
}

void Transfer::deliverEnd() {
    const auto listener = std::exchange(listener_, nullptr);
    if (!stage_.failed)
        return listener->didFinish();
    if (removesFileOnFailure_)
        file_.remove();
    listener->didFail(error_, request_.address);
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
    file_.remove();
}

} // namespace vant
