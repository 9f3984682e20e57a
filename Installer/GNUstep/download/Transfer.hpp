#pragma once
#include "GNUstep/download/Decoder.hpp"
#include "GNUstep/download/File.hpp"
#include "GNUstep/download/Messages.hpp"
#include "GNUstep/download/Poller.hpp"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <optional>

namespace vant {

/// The time that one source may use before the next one has its turn.
struct Slice {
    Clock::time_point end = Clock::time_point::max();
    [[nodiscard]] bool isOver() const noexcept { return Clock::now() >= end; }
};

/// Where the bytes of one request come from. Its end stops the flow.
class DownloadSource {
public:
    virtual ~DownloadSource() = default;
    /// Lets bytes flow again that were held back, or that the source itself left for its next slice.
    [[nodiscard]] virtual DownloadError resume() = 0;
    /// True when it stopped at the end of its slice although there was more.
    [[nodiscard]] virtual bool yielded() const noexcept = 0;
    /// True when it has come to its end by itself, within `resume`.
    [[nodiscard]] virtual bool ended() const noexcept { return false; }
};

/// One download, from its request to its one terminal message: what arrived, what is still to be told, and the file.
/// Sources report to it at any time; it speaks to its listener only in `deliverNextMessage`. One thread, but for
/// `mute`.
class Transfer : public std::enable_shared_from_this<Transfer> {
public:
    /// What a source does after it has offered bytes.
    enum class Receipt { accepted, paused, rejected };

    Transfer(DownloadRequest request, std::shared_ptr<DownloadListener> listener);

    // Reported by the source.
    void noteActivity(Clock::time_point now) noexcept { lastActivity_ = now; }
    void receiveResponse(DownloadResponse response);
    [[nodiscard]] Receipt receive(std::string_view bytes);
    void finishSource(DownloadError error);

    // Asked by the engine.
    [[nodiscard]] bool isFinished() const noexcept { return listener_ == nullptr; }
    [[nodiscard]] bool needsSource() const noexcept {
        return !isFinished() && !stage_.ended && sourcePending_ && !source_;
    }
    [[nodiscard]] bool hasMessage(Clock::time_point now) const noexcept;
    /// True when there is something to do for it that no descriptor tells of.
    [[nodiscard]] bool isRunnable(Clock::time_point now) const noexcept;
    [[nodiscard]] bool yielded() const noexcept { return source_ != nullptr && source_->yielded(); }
    /// Lets a source that yielded go on.
    void proceed();
    /// When to look again even if nothing arrives; `Clock::time_point::max()` for never.
    [[nodiscard]] Clock::time_point deadline() const noexcept;
    /// Does not count so much of the time gone by as silence.
    void extendDeadline(Clock::duration time, Clock::time_point now) noexcept {
        lastActivity_ = std::min(lastActivity_ + time, now);
    }
    /// Ends the download as timed out when its source gave no sign of life for the request's time-out.
    void expire(Clock::time_point now);
    void setSource(std::unique_ptr<DownloadSource> source);
    /// Tells the listener the next thing due, if there is one.
    void deliverNextMessage(Clock::time_point now);
    [[nodiscard]] bool hasSource() const noexcept { return source_ != nullptr; }
    [[nodiscard]] bool wasRedirected() const noexcept { return redirects_ > 0; }
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
    [[nodiscard]] DownloadStage stageAt(Clock::time_point now) const noexcept;
    [[nodiscard]] Receipt store(std::string_view bytes);
    [[nodiscard]] bool write(std::string_view bytes);
    void end(DownloadError error);
    void release(Gate gate);
    void deliverRedirect();
    void deliverResponse();
    void createFile();
    void deliverData(Clock::time_point now);
    void deliverEnd();

    DownloadRequest request_;
    std::shared_ptr<DownloadListener> listener_;
    std::unique_ptr<DownloadSource> source_;
    std::unique_ptr<ContentDecoder> decoder_;
    DownloadResponse response_;
    DownloadStage stage_;
    Gate gate_ = Gate::held;
    bool sourcePending_ = true;
    bool holding_ = false;
    bool removesFileOnFailure_ = true;
    int redirects_ = 0;
    std::size_t discarded_ = 0;
    std::size_t unreported_ = 0;
    std::string destination_;
    Existing existing_ = Existing::keep;
    DownloadFile file_;
    DownloadError error_ = DownloadError::none;
    Clock::time_point lastActivity_;
    Clock::time_point lastReport_;
    std::atomic<bool> muted_ = false;
};

} // namespace vant
