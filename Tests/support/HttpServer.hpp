#pragma once
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace vant::test {

using Fields = std::vector<std::pair<std::string, std::string>>;

struct HttpRequest {
    std::string method;
    std::string target;
    Fields fields;
    std::string body;

    /// The value of a field, whatever the case of its name; empty when it is absent.
    [[nodiscard]] std::string field(std::string_view name) const;
};

/// How the end of a body is told.
enum class Framing { length, chunked, close };

/// What happens to the connection once `HttpReply::faultAfter` bytes of the body are out.
enum class Fault {
    none,
    reset, ///< RST: what is on the way is lost.
    close, ///< An orderly end in the wrong place.
    stall, ///< Nothing more is sent; the connection stays until the server goes.
};

struct HttpReply {
    int status = 200;
    Fields fields;
    std::string body;
    /// Instead of `body`: so many bytes of `patternByte`, without holding them.
    std::uint64_t patternLength = 0;
    Framing framing = Framing::length;
    /// A Content-Length other than the true one.
    std::optional<std::uint64_t> announcedLength;
    Fault fault = Fault::none;
    std::uint64_t faultAfter = 0;
    /// Pause before the header, and between pieces of `pieceLength` of the body.
    std::chrono::milliseconds delay{0};
    std::chrono::milliseconds pieceDelay{0};
    std::uint64_t pieceLength = 64UL * 1024;
    /// Speed of this reply's line, 0 for as fast as it goes. Each piece takes longer or shorter by up to the share
    /// `jitter` (0 to 1) of its time.
    double bytesPerSecond = 0;
    double jitter = 0;
    /// Called before the header and when half of the body is out; what follows waits until they return.
    std::function<void()> beforeHeader;
    std::function<void()> atHalf;
    /// Sent as they are instead of a header; empty for a proper one.
    std::string rawHeader;
};

/// The byte at a place of a generated body.
[[nodiscard]] constexpr char patternByte(std::uint64_t place) noexcept {
    return static_cast<char>((place * 31 + place / 251) & 0xff);
}

/// After so many bytes a generated body begins anew.
inline constexpr std::uint64_t patternPeriod = 251UL * 256;

/// A small web server on a loopback port of its own, whose faults are made at the socket. One thread a connection.
/// Replies may be added while it runs; everything stops with the object.
class HttpServer {
public:
    using Handler = std::function<HttpReply(const HttpRequest &)>;

    HttpServer();
    HttpServer(const HttpServer &) = delete;
    HttpServer &operator=(const HttpServer &) = delete;
    ~HttpServer();

    void serve(const std::string &target, HttpReply reply);
    void serve(const std::string &target, Handler handler);

    [[nodiscard]] int port() const noexcept { return port_; }
    [[nodiscard]] std::string url(const std::string &target) const;

    /// Requests in the order of their arrival, those not yet answered included.
    [[nodiscard]] std::vector<HttpRequest> requests() const;
    /// Connections accepted so far.
    [[nodiscard]] std::size_t connections() const noexcept { return accepted_; }
    /// The largest number of requests that were being answered at one time.
    [[nodiscard]] int mostAtOnce() const noexcept { return mostAtOnce_; }

private:
    struct Connection {
        int socket = -1;
        std::thread thread;
    };

    void acceptAll();
    void converse(Connection &connection);
    [[nodiscard]] HttpReply replyTo(const HttpRequest &request);
    [[nodiscard]] bool answer(int socket, const HttpRequest &request, const HttpReply &reply);
    [[nodiscard]] bool sendBody(int socket, const HttpReply &reply);
    void pause(std::chrono::microseconds time) const;
    void stall() const;

    int listener_ = -1;
    int port_ = 0;
    std::atomic<bool> stopping_ = false;
    std::atomic<std::size_t> accepted_ = 0;
    std::atomic<int> atOnce_ = 0;
    std::atomic<int> mostAtOnce_ = 0;
    mutable std::mutex mutex_;
    std::map<std::string, Handler> handlers_;
    std::vector<HttpRequest> requests_;
    std::list<Connection> connections_;
    std::thread acceptor_;
};

/// A loopback port on which nothing listens.
[[nodiscard]] int closedPort();

} // namespace vant::test
