#include "HttpServer.hpp"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <optional>
#include <random>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace vant::test {
namespace {

using namespace std::chrono_literals;

bool sameName(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right,
                              [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); });
}

/// A listening socket on a free loopback port, and the port.
std::pair<int, int> listenOnLoopback(bool listening) {
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto *generic = reinterpret_cast<sockaddr *>(&address);
    constexpr int backlog = 256;
    if (::bind(socket, generic, length) != 0 || (listening && ::listen(socket, backlog) != 0) ||
        ::getsockname(socket, generic, &length) != 0)
        throw std::runtime_error("no loopback port");
    return {socket, ntohs(address.sin_port)};
}

bool sendAll(int socket, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto count = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

/// Appends what arrives; false at the end of the connection.
bool receiveMore(int socket, std::string &buffer) {
    std::array<char, 16384> piece{};
    auto count = ::recv(socket, piece.data(), piece.size(), 0);
    while (count < 0 && errno == EINTR)
        count = ::recv(socket, piece.data(), piece.size(), 0);
    if (count <= 0)
        return false;
    buffer.append(piece.data(), static_cast<std::size_t>(count));
    return true;
}

HttpRequest parsed(std::string_view head) {
    HttpRequest request;
    auto line = head.substr(0, head.find("\r\n"));
    request.method = line.substr(0, line.find(' '));
    line.remove_prefix(std::min(line.size(), request.method.size() + 1));
    request.target = line.substr(0, line.find(' '));
    for (auto at = head.find("\r\n"); at != std::string_view::npos; at = head.find("\r\n")) {
        head.remove_prefix(at + 2);
        const auto text = head.substr(0, head.find("\r\n"));
        if (const auto colon = text.find(": "); colon != std::string_view::npos)
            request.fields.emplace_back(text.substr(0, colon), text.substr(colon + 2));
    }
    return request;
}

std::size_t bodyLength(const HttpRequest &request) {
    const std::string text = request.field("Content-Length");
    std::size_t length = 0;
    std::from_chars(text.data(), text.data() + text.size(), length);
    return length;
}

/// The next request of a connection, whose bytes so far are in the buffer.
std::optional<HttpRequest> nextRequest(int socket, std::string &buffer) {
    auto end = buffer.find("\r\n\r\n");
    while (end == std::string::npos) {
        if (!receiveMore(socket, buffer))
            return std::nullopt;
        end = buffer.find("\r\n\r\n");
    }
    auto request = parsed(std::string_view(buffer).substr(0, end + 2));
    buffer.erase(0, end + 4);
    const auto length = bodyLength(request);
    while (buffer.size() < length)
        if (!receiveMore(socket, buffer))
            return std::nullopt;
    request.body = buffer.substr(0, length);
    buffer.erase(0, length);
    return request;
}

std::uint64_t lengthOf(const HttpReply &reply) {
    return reply.patternLength != 0 ? reply.patternLength : reply.body.size();
}

std::string headerOf(const HttpReply &reply) {
    if (!reply.rawHeader.empty())
        return reply.rawHeader;
    std::string header = "HTTP/1.1 " + std::to_string(reply.status) + " Reply\r\n";
    for (const auto &[name, value] : reply.fields)
        header.append(name).append(": ").append(value).append("\r\n");
    if (reply.framing == Framing::length)
        header += "Content-Length: " + std::to_string(reply.announcedLength.value_or(lengthOf(reply))) + "\r\n";
    else
        header += reply.framing == Framing::chunked ? "Transfer-Encoding: chunked\r\n" : "Connection: close\r\n";
    return header + "\r\n";
}

/// Two periods of the generated body, so that any piece of at most one period stands in it somewhere.
const std::string &patternTable() {
    static const std::string table = [] {
        std::string bytes(2 * patternPeriod, '\0');
        for (std::size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = patternByte(i);
        return bytes;
    }();
    return table;
}

std::string_view pieceOf(const HttpReply &reply, std::uint64_t start, std::uint64_t length) {
    if (reply.patternLength == 0)
        return std::string_view(reply.body).substr(start, length);
    return std::string_view(patternTable()).substr(start % patternPeriod, std::min(length, patternPeriod));
}

std::string chunk(std::string_view piece) {
    std::array<char, 32> size{};
    const auto end = std::to_chars(size.data(), size.data() + size.size(), piece.size(), 16).ptr;
    return std::string(size.data(), end).append("\r\n").append(piece).append("\r\n");
}

/// How long the reply's line takes for a piece.
std::chrono::microseconds lineTime(const HttpReply &reply, std::size_t length) {
    if (reply.bytesPerSecond <= 0)
        return 0us;
    thread_local std::minstd_rand random(std::random_device{}());
    const double factor = std::uniform_real_distribution(1 - reply.jitter, 1 + reply.jitter)(random);
    const std::chrono::duration<double> time(factor * static_cast<double>(length) / reply.bytesPerSecond);
    return std::chrono::duration_cast<std::chrono::microseconds>(time);
}

void resetOnClose(int socket) {
    const linger now{.l_onoff = 1, .l_linger = 0};
    ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &now, sizeof now);
}

} // namespace

std::string HttpRequest::field(std::string_view name) const {
    const auto found = std::ranges::find_if(fields, [&](const auto &field) { return sameName(field.first, name); });
    return found == fields.end() ? std::string{} : found->second;
}

HttpServer::HttpServer() {
    std::tie(listener_, port_) = listenOnLoopback(true);
    acceptor_ = std::thread([this] { acceptAll(); });
}

HttpServer::~HttpServer() {
    stopping_ = true;
    ::shutdown(listener_, SHUT_RDWR);
    acceptor_.join();
    ::close(listener_);
    {
        const std::lock_guard lock(mutex_);
        for (const auto &connection : connections_)
            ::shutdown(connection.socket, SHUT_RDWR);
    }
    for (auto &connection : connections_)
        connection.thread.join();
}

void HttpServer::serve(const std::string &target, HttpReply reply) {
    serve(target, [reply = std::move(reply)](const HttpRequest & /*request*/) { return reply; });
}

void HttpServer::serve(const std::string &target, Handler handler) {
    const std::lock_guard lock(mutex_);
    handlers_[target] = std::move(handler);
}

std::string HttpServer::url(const std::string &target) const {
    return "http://127.0.0.1:" + std::to_string(port_) + target;
}

std::vector<HttpRequest> HttpServer::requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

void HttpServer::acceptAll() {
    for (;;) {
        const int socket = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        if (!stopping_ && socket < 0 && errno == EINTR)
            continue;
        if (stopping_ || socket < 0) {
            if (socket >= 0)
                ::close(socket);
            return;
        }
        constexpr int on = 1;
        ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        ++accepted_;
        auto &connection = connections_.emplace_back();
        connection.socket = socket;
        connection.thread = std::thread([this, &connection] { converse(connection); });
    }
}

void HttpServer::converse(Connection &connection) {
    const int socket = connection.socket;
    std::string buffer;
    bool open = true;
    while (open && !stopping_) {
        const auto request = nextRequest(socket, buffer);
        if (!request)
            break;
        const int now = ++atOnce_;
        for (int most = mostAtOnce_; now > most && !mostAtOnce_.compare_exchange_weak(most, now);) {
        }
        open = answer(socket, *request, replyTo(*request));
        --atOnce_;
    }
    const std::lock_guard lock(mutex_);
    ::close(std::exchange(connection.socket, -1));
}

HttpReply HttpServer::replyTo(const HttpRequest &request) {
    Handler handler;
    {
        const std::lock_guard lock(mutex_);
        requests_.push_back(request);
        if (const auto found = handlers_.find(request.target); found != handlers_.end())
            handler = found->second;
    }
    return handler ? handler(request) : HttpReply{.status = 404, .body = "not here"};
}

bool HttpServer::answer(int socket, const HttpRequest &request, const HttpReply &reply) {
    pause(reply.delay);
    if (reply.beforeHeader)
        reply.beforeHeader();
    if (!sendAll(socket, headerOf(reply)))
        return false;
    if (request.method == "HEAD")
        return true;
    return sendBody(socket, reply) && reply.framing != Framing::close && reply.rawHeader.empty();
}

bool HttpServer::sendBody(int socket, const HttpReply &reply) {
    const auto length = reply.fault == Fault::none ? lengthOf(reply) : std::min(lengthOf(reply), reply.faultAfter);
    for (std::uint64_t at = 0; at < length && !stopping_;) {
        const auto piece = pieceOf(reply, at, std::min(reply.pieceLength, length - at));
        if (!(reply.framing == Framing::chunked ? sendAll(socket, chunk(piece)) : sendAll(socket, piece)))
            return false;
        if (reply.atHalf && at < length / 2 && at + piece.size() >= length / 2)
            reply.atHalf();
        at += piece.size();
        pause(reply.pieceDelay + lineTime(reply, piece.size()));
    }
    switch (reply.fault) {
    case Fault::none:
        return reply.framing != Framing::chunked || sendAll(socket, "0\r\n\r\n");
    case Fault::reset:
        resetOnClose(socket);
        return false;
    case Fault::close:
        return false;
    case Fault::stall:
        stall();
        return false;
    }
    return false;
}

void HttpServer::pause(std::chrono::microseconds time) const {
    const auto end = std::chrono::steady_clock::now() + time;
    for (auto now = end - time; !stopping_ && now < end; now = std::chrono::steady_clock::now())
        std::this_thread::sleep_until(std::min(end, now + 5ms));
}

void HttpServer::stall() const {
    while (!stopping_)
        std::this_thread::sleep_for(5ms);
}

int closedPort() {
    const auto [socket, port] = listenOnLoopback(false);
    ::close(socket);
    return port;
}

} // namespace vant::test
