#include "GNUstep/download/Address.hpp"
#include "GNUstep/download/Transfer.hpp"

#include <utility>

// What a transfer tells its listener. Each message may cancel the download, or run the engine, before it returns.

namespace vant {
namespace {

constexpr int maxRedirects = 20;

} // namespace

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
    if (next)
        return follow(*std::move(next));
    stage_.responsePending = true;
    if (!source_)
        end(DownloadError::none);
}

void Transfer::follow(DownloadRequest next) {
    const auto failure = errorForRedirect(request_.address, next.address);
    request_ = std::move(next);
    if (failure != DownloadError::none)
        return end(failure);
    discarded_ = 0;
    sourceEnded_ = false;
    if (source_)
        return release(Gate::discarding);
    sourcePending_ = true;
}

void Transfer::deliverResponse() {
    const auto listener = listener_;
    stage_.responsePending = false;
    stage_.responseDelivered = true;
    body_.setEncoding(response_.field("Content-Encoding"));
    listener->didReceiveResponse(response_);
}

void Transfer::createFile() {
    const auto listener = listener_;
    const auto failure = body_.create(destination_, existing_);
    if (failure != DownloadError::none)
        return end(failure);
    release(Gate::open);
    if (stage_.ended && !stage_.failed)
        end(DownloadError::none);
    listener->didCreateDestination(body_.file().path());
}

void Transfer::deliverData(Clock::time_point now) {
    lastReport_ = now;
    listener_->didReceiveData(body_.takeUnreported());
}

void Transfer::deliverEnd() {
    const auto listener = std::exchange(listener_, nullptr);
    if (!stage_.failed)
        return listener->didFinish();
    if (removesFileOnFailure_)
        body_.file().remove();
    listener->didFail(error_, request_.address);
}

} // namespace vant
