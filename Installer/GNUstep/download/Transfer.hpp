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
    [[nodiscard]] bool over() const noexcept { return Clock::now() >= end; }
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
/// Sources report to it at any time; it speaks to its listener only in `tellNext`. One thread, but for `mute`.
class Transfer : public std::enable_shared_from_this<Transfer> {
public:
    /// What a source does after it has offered bytes.
    enum class Taken { all, hold, refuse };

    Transfer(DownloadRequest request, std::shared_ptr<DownloadListener> listener);

    // Reported by the source.
    void touch(Clock::time_point now) noexcept { lastSign_ = now; }
    void answered(DownloadResponse response);
    [[nodiscard]] Taken receive(std::string_view bytes);
    void sourceEnded(DownloadError error);

    // Asked by the engine.
    [[nodiscard]] bool over() const noexcept { return listener_ == nullptr; }
    [[nodiscard]] bool wantsSource() const noexcept { return !over() && !stage_.ended && awaitsSource_ && !source_; }
    [[nodiscard]] bool hasMessage(Clock::time_point now) const noexcept;
    /// True when there is something to do for it that no descriptor tells of.
    [[nodiscard]] bool wantsTurn(Clock::time_point now) const noexcept;
    [[nodiscard]] bool yielded() const noexcept { return source_ != nullptr && source_->yielded(); }
    /// Lets a source that yielded go on.
    void proceed();
    /// When to look again even if nothing arrives; `Clock::time_point::max()` for never.
    [[nodiscard]] Clock::time_point deadline() const noexcept;
    /// Does not count so much of the time gone by as silence.
    void excuse(Clock::duration time, Clock::time_point now) noexcept { lastSign_ = std::min(lastSign_ + time, now); }
    /// Ends the download as timed out when its source gave no sign of life for the request's time-out.
    void expire(Clock::time_point now);
    void setSource(std::unique_ptr<DownloadSource> source);
    /// Tells the listener the next thing due, if there is one.
    void tellNext(Clock::time_point now);
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
    [[nodiscard]] Taken store(std::string_view bytes);
    [[nodiscard]] bool write(std::string_view bytes);
    void end(DownloadError error);
    void release(Gate gate);
    void tellRedirect();
    void tellResponse();
    void makeFile();
    void tellData(Clock::time_point now);
    void tellEnd();

    DownloadRequest request_;
    std::shared_ptr<DownloadListener> listener_;
    std::unique_ptr<DownloadSource> source_;
    std::unique_ptr<ContentDecoder> decoder_;
    DownloadResponse response_;
    DownloadStage stage_;
    Gate gate_ = Gate::held;
    bool awaitsSource_ = true;
    bool holding_ = false;
    bool removesFileOnFailure_ = true;
    int redirects_ = 0;
    std::size_t discarded_ = 0;
    std::size_t untold_ = 0;
    std::string destination_;
    Existing existing_ = Existing::keep;
    DownloadFile file_;
    DownloadError error_ = DownloadError::none;
    Clock::time_point lastSign_;
    Clock::time_point lastTold_;
    std::atomic<bool> muted_ = false;
};

} // namespace vant
