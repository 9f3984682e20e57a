#pragma once
#include "GNUstep/download/Body.hpp"
#include "GNUstep/download/Messages.hpp"
#include "GNUstep/download/Slice.hpp"

#include <algorithm>
#include <atomic>
#include <memory>
#include <optional>

namespace vant {

/// Where the bytes of one request come from. Destroying it stops the flow.
class DownloadSource {
public:
    virtual ~DownloadSource() = default;
    /// Continues a flow that was paused, or that stopped at the end of its slice.
    [[nodiscard]] virtual DownloadError resume() = 0;
    /// True when it stopped at the end of its slice although there was more.
    [[nodiscard]] virtual bool yielded() const noexcept = 0;
    /// True when it reached its end within `resume`.
    [[nodiscard]] virtual bool ended() const noexcept { return false; }
};

/// One download, from its request to its one terminal message: what has arrived, what is still to be delivered, and the
/// file. Sources report to it at any time; it calls its listener only in `deliverNextMessage`. One thread, but for
/// `mute`.
class Transfer : public std::enable_shared_from_this<Transfer> {
public:
    /// What a source does after it has offered bytes: offer the next, offer these again after `resume`, or stop.
    enum class Receipt { accepted, paused, rejected };

    /// `slice` must outlive the transfer; it bounds the work of each call.
    Transfer(DownloadRequest request, std::shared_ptr<DownloadListener> listener, const Slice &slice);

    // Reported by the source.
    /// Data is there, or the source does something else than wait.
    void noteActivity(Clock::time_point now) noexcept { lastActivity_ = now; }
    /// The head of the response is complete.
    void receiveResponse(DownloadResponse response);
    /// The next bytes of the body.
    [[nodiscard]] Receipt receive(std::string_view bytes);
    /// Why the source is about to be stopped; the first reason counts.
    void reject(DownloadError error) noexcept;
    /// The source has ended, and is destroyed.
    void finishSource(DownloadError error);

    // Asked by the engine.
    /// True from the terminal message, or from `cancel`, on.
    [[nodiscard]] bool isFinished() const noexcept { return listener_ == nullptr; }
    /// True when its request is to be sent.
    [[nodiscard]] bool needsSource() const noexcept {
        return !isFinished() && !stage_.ended && sourcePending_ && !source_;
    }
    /// True when a message is due.
    [[nodiscard]] bool hasMessage(Clock::time_point now) const noexcept;
    /// True when there is work that no descriptor announces.
    [[nodiscard]] bool isRunnable(Clock::time_point now) const noexcept;
    /// True when it stopped at the end of a slice.
    [[nodiscard]] bool yielded() const noexcept { return isDecoding() || (source_ != nullptr && source_->yielded()); }
    /// Continues after a slice's end.
    void proceed();
    /// When to look again even if nothing arrives; `Clock::time_point::max()` for never.
    [[nodiscard]] Clock::time_point deadline() const noexcept;
    /// Postpones the time-out by the time in which the thread was busy elsewhere.
    void extendDeadline(Clock::duration time, Clock::time_point now) noexcept {
        lastActivity_ = std::min(lastActivity_ + time, now);
    }
    /// Ends the download as timed out when its source was inactive for the request's time-out.
    void expire(Clock::time_point now);
    /// Starts the flow of bytes.
    void setSource(std::unique_ptr<DownloadSource> source);
    /// Sends the listener the next message that is due, if there is one.
    void deliverNextMessage(Clock::time_point now);
    [[nodiscard]] bool hasSource() const noexcept { return source_ != nullptr; }
    [[nodiscard]] const DownloadRequest &request() const noexcept { return request_; }

    // Asked by the owner.
    /// The first destination counts, every later one is ignored.
    void setDestination(std::string path, Existing existing);
    void setRemovesFileOnFailure(bool removes) noexcept { removesFileOnFailure_ = removes; }
    /// Ends everything without a message and removes the file.
    void cancel();
    /// No message is begun after this; any thread.
    void mute() noexcept { muted_ = true; }

private:
    enum class Gate { held, open, discarding };

    [[nodiscard]] bool canExpire() const noexcept { return source_ != nullptr && !stage_.ended && !holding_; }
    [[nodiscard]] bool isDecoding() const noexcept { return body_.isDecoding() && !stage_.ended && !isFinished(); }
    [[nodiscard]] DownloadStage stageAt(Clock::time_point now) const noexcept;
    [[nodiscard]] Receipt store(std::string_view bytes);
    [[nodiscard]] bool finishDecoding();
    void finishBody();
    void end(DownloadError error);
    void release(Gate gate);
    void deliverRedirect();
    void follow(DownloadRequest next);
    void deliverResponse();
    void createFile();
    void deliverData(Clock::time_point now);
    void deliverEnd();

    DownloadRequest request_;
    std::shared_ptr<DownloadListener> listener_;
    Body body_;
    std::unique_ptr<DownloadSource> source_;
    DownloadResponse response_;
    DownloadStage stage_;
    Gate gate_ = Gate::held;
    bool sourcePending_ = true;
    bool sourceEnded_ = false;
    bool holding_ = false;
    bool removesFileOnFailure_ = true;
    int redirects_ = 0;
    std::size_t discarded_ = 0;
    std::string destination_;
    Existing existing_ = Existing::keep;
    DownloadError error_ = DownloadError::none;
    Clock::time_point lastActivity_;
    Clock::time_point lastReport_;
    std::atomic<bool> muted_ = false;
};

} // namespace vant
