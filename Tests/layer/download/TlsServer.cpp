#include "TlsServer.hpp"

#include "HttpServer.hpp"

#include <arpa/inet.h>
#include <csignal>
#include <cstdlib>
#include <netinet/in.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vant::test {
namespace {

std::string configuration(int port, const std::string &locations) {
    // As root, nginx would answer as a user who may not be let into the folder.
    const std::string user = ::getuid() == 0 ? "user root;\n" : "";
    std::string paths;
    for (const char *name : {"client_body", "proxy", "fastcgi", "uwsgi", "scgi"})
        paths += std::string(name) + "_temp_path temporary;\n";
    return user + "daemon off;\nmaster_process off;\npid nginx.pid;\nevents { worker_connections 64; }\nhttp {\n" +
           "access_log off;\n" + paths + "server {\nlisten 127.0.0.1:" + std::to_string(port) +
           " ssl;\nssl_certificate certificate.pem;\nssl_certificate_key key.pem;\n" + locations + "}\n}\n";
}

} // namespace

TlsServer::TlsServer(const std::string &locations) : port_(closedPort()) {
    writeFile(folder_.path("nginx.conf"), configuration(port_, locations));
    if (makeCertificate())
        start();
}

TlsServer::~TlsServer() {
    if (!isRunning())
        return;
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
}

std::string TlsServer::url(const std::string &target) const {
    return "https://127.0.0.1:" + std::to_string(port_) + target;
}

bool TlsServer::makeCertificate() const {
    const std::string command = "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 "
                                "-subj /CN=127.0.0.1 -addext subjectAltName=IP:127.0.0.1 -keyout '" +
                                folder_.path("key.pem").string() + "' -out '" + certificate() + "' 2>/dev/null";
    return std::system(command.c_str()) == 0;
}

void TlsServer::start() {
    std::string words[] = {"nginx", "-p", folder_.root().string() + "/", "-e", "error.log", "-c", "nginx.conf"};
    char *arguments[std::size(words) + 1] = {};
    for (std::size_t i = 0; i < std::size(words); ++i)
        arguments[i] = words[i].data();
    if (::posix_spawn(&process_, "/usr/sbin/nginx", nullptr, nullptr, arguments, environ) != 0)
        process_ = -1;
    for (int wait = 0; isRunning() && !answers() && wait < 2000; ++wait)
        ::usleep(10'000);
}

bool TlsServer::answers() const {
    const int probe = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port_));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const bool connected = ::connect(probe, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    ::close(probe);
    return connected;
}

} // namespace vant::test
