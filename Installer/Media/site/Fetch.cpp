#include "site/Fetch.hpp"

#include "download/RequestFields.hpp"
#include "GNUstep/download/Engine.hpp"
#include "read/Interruption.hpp"

#include <algorithm>
#include <memory>
#include <numeric>

namespace vant::media {
namespace {

constexpr std::size_t mostAtATime = 8;
constexpr std::chrono::milliseconds betweenLooks{100};
constexpr double leastBytesASecond = 1000;
constexpr int firstSuccess = 200;
constexpr int firstRedirect = 300;

DownloadRequest requestFor(const std::string &address, const FetchLimits &limits) {
    return {.address = address,
            .fields = {{"User-Agent", std::string(requestUserAgent)}, {"Accept", std::string(requestAccept)}},
            .body = {},
            .timeOut = limits.wait};
}

/// Writes down what a download tells.
class Receiver : public DownloadListener {
public:
    explicit Receiver(Fetched &fetched) : fetched_(fetched) {}

    void didBegin() override {}
    std::optional<DownloadRequest> willRedirect(const DownloadRequest &proposed,
                                                const DownloadResponse & /*by*/) override {
        fetched_.redirects.push_back(proposed.address);
        return proposed;
    }
    void didReceiveResponse(const DownloadResponse &response) override {
        fetched_.status = response.status;
        fetched_.mediaType = response.mediaType();
        fetched_.encoding = response.field("Content-Encoding");
        fetched_.announced = response.expectedLength;
    }
    void decideDestination(const std::string & /*suggestedName*/) override {}
    void didCreateDestination(const std::string & /*path*/) override {}
    void didReceiveData(std::size_t length) override { fetched_.received += length; }
    void didFinish() override {}
    void didFail(DownloadError error, const std::string & /*address*/) override {
        fetched_.fault = Fetched::Fault::Failed;
        fetched_.error = error;
    }

private:
    Fetched &fetched_;
};

/// What has come, or what was announced when that is more.
std::uint64_t sizeOf(const Fetched &fetched) noexcept {
    return std::max(fetched.received, static_cast<std::uint64_t>(std::max<std::int64_t>(fetched.announced, 0)));
}

/// A download under way, and how much it had brought when it was last looked at.
struct Running {
    std::shared_ptr<Transfer> transfer;
    Fetched *fetched;
    Clock::time_point since = Clock::now();
    std::uint64_t before = 0;
};

class Fetching {
public:
    Fetching(std::span<const FetchOrder> orders, const FetchLimits &limits)
        : orders_(orders), limits_(limits), fetched_(orders.size()) {}

    std::vector<Fetched> run(const FetchProgress &progress) {
        while (start()) {
            engine_.wait(betweenLooks);
            throwIfInterrupted();
            engine_.perform();
            for (Running &running : running_)
                watch(running);
            std::erase_if(running_, [](const Running &running) { return running.transfer->isFinished(); });
            progress(next_ - running_.size(), bytes());
        }
        return std::move(fetched_);
    }

private:
    /// Starts what may run beside the others; false when all is done.
    bool start() {
        for (; next_ < orders_.size() && running_.size() < mostAtATime; ++next_) {
            const FetchOrder &order = orders_[next_];
            auto transfer =
                engine_.start(requestFor(order.address, limits_), std::make_shared<Receiver>(fetched_[next_]));
            engine_.setDestination(*transfer, order.file, Existing::replace);
            running_.push_back({.transfer = std::move(transfer), .fetched = &fetched_[next_]});
        }
        return !running_.empty();
    }

    void watch(Running &running) {
        const Fetched &fetched = *running.fetched;
        // Whether it has ended since the last look does not matter: it may have come all at once.
        if (fetched.fault == Fetched::Fault::None && sizeOf(fetched) > limits_.largest)
            return stop(running, Fetched::Fault::TooLarge);
        if (running.transfer->isFinished())
            return;
        if (Clock::now() - running.since < std::chrono::duration<double>(limits_.wait))
            return;
        if (static_cast<double>(fetched.received - running.before) < leastBytesASecond * limits_.wait)
            return stop(running, Fetched::Fault::TooSlow);
        running.since = Clock::now();
        running.before = fetched.received;
    }

    void stop(Running &running, Fetched::Fault fault) {
        running.fetched->fault = fault;
        engine_.cancel(*running.transfer);
    }

    [[nodiscard]] std::uint64_t bytes() const {
        return std::accumulate(fetched_.begin(), fetched_.end(), std::uint64_t{0},
                               [](std::uint64_t sum, const Fetched &each) { return sum + each.received; });
    }

    std::span<const FetchOrder> orders_;
    FetchLimits limits_;
    std::vector<Fetched> fetched_;
    std::size_t next_ = 0;
    std::vector<Running> running_;
    DownloadEngine engine_;
};

} // namespace

bool hasArrived(const Fetched &fetched) noexcept {
    const bool isSuccess = fetched.status == 0 || (fetched.status >= firstSuccess && fetched.status < firstRedirect);
    return fetched.fault == Fetched::Fault::None && isSuccess;
}

std::vector<Fetched> fetch(std::span<const FetchOrder> orders, const FetchLimits &limits,
                           const FetchProgress &progress) {
    return Fetching(orders, limits).run(progress);
}

std::string errorWords(DownloadError error) {
    switch (error) {
    case DownloadError::timedOut:
        return "the server sent nothing for too long";
    case DownloadError::cannotFindHost:
        return "the host's name is not known";
    case DownloadError::cannotConnect:
        return "nobody answers there";
    case DownloadError::connectionLost:
        return "the connection ended before the answer did";
    case DownloadError::notConnected:
        return "there is no way to the network";
    case DownloadError::badAddress:
        return "the address is malformed";
    case DownloadError::unsupportedAddress:
        return "the address is none that the platform fetches";
    case DownloadError::badServerResponse:
        return "the server's answer is no HTTP that can be understood";
    case DownloadError::cannotDecode:
        return "the answer cannot be decoded by its Content-Encoding";
    case DownloadError::secureConnectionFailed:
    case DownloadError::certificateUntrusted:
        return "the connection cannot be secured, or the server's certificate is not trusted";
    case DownloadError::cannotWriteFile:
        return "the file cannot be written, for lack of room perhaps";
    case DownloadError::cannotCreateFile:
    case DownloadError::cannotOpenFile:
        return "the file cannot be created";
    case DownloadError::fileDoesNotExist:
        return "there is no such file";
    default:
        return "the platform's code is " + std::to_string(static_cast<int>(error));
    }
}

} // namespace vant::media
