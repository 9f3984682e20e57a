// Stands before the system's look-up of names: one name takes its time, which no test can ask of a real name server.
#include <chrono>
#include <dlfcn.h>
#include <netdb.h>
#include <string_view>
#include <thread>

extern "C" int getaddrinfo(const char *node, const char *service, const addrinfo *hints, addrinfo **result) {
    using LookUp = int (*)(const char *, const char *, const addrinfo *, addrinfo **);
    static const auto system = reinterpret_cast<LookUp>(dlsym(RTLD_NEXT, "getaddrinfo"));
    if (node != nullptr && std::string_view(node) == "slow-to-resolve.invalid") {
        std::this_thread::sleep_for(std::chrono::seconds(3));
        return EAI_NONAME;
    }
    return system(node, service, hints, result);
}
