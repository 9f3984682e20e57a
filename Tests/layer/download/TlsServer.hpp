#pragma once
#include "Jail.hpp"

#include <string>
#include <sys/types.h>

namespace vant::test {

/// A real web server with TLS on loopback, whose certificate is made for it and signed by itself.
class TlsServer {
public:
    /// Starts it with the answers of nginx "location" blocks. `isRunning` is false when it does not come up.
    explicit TlsServer(const std::string &locations);
    TlsServer(const TlsServer &) = delete;
    TlsServer &operator=(const TlsServer &) = delete;
    ~TlsServer();

    [[nodiscard]] bool isRunning() const noexcept { return process_ > 0; }
    [[nodiscard]] std::string url(const std::string &target) const;
    /// The file that a client has to trust.
    [[nodiscard]] std::string certificate() const { return folder_.path("certificate.pem"); }

private:
    [[nodiscard]] bool makeCertificate() const;
    void start();
    [[nodiscard]] bool answers() const;

    Jail folder_;
    int port_;
    pid_t process_ = -1;
};

} // namespace vant::test
