#include "GNUstep/authorization/AuthorizationHandles.hpp"

#include <algorithm>
#include <cstdint>
#include <map>
#include <mutex>

namespace vant {
namespace {

std::mutex handlesMutex;

using Rights = std::map<std::string, std::chrono::steady_clock::time_point>;

/// The rights of each living handle, and when they expire.
std::map<AuthorizationRef, Rights> &handles() {
    // Never destroyed: an installer thread may still ask while the process ends.
    static auto *const all = new std::map<AuthorizationRef, Rights>;
    return *all;
}

} // namespace

AuthorizationRef makeHandle() {
    const std::scoped_lock lock(handlesMutex);
    static std::uintptr_t lastNumber = 0;
    auto *const handle = reinterpret_cast<AuthorizationRef>(++lastNumber); // NOLINT(performance-no-int-to-ptr)
    handles()[handle];
    return handle;
}

bool isHandle(AuthorizationRef handle) {
    const std::scoped_lock lock(handlesMutex);
    return handles().contains(handle);
}

void grantRights(AuthorizationRef handle, const std::vector<std::string> &names,
                 std::chrono::steady_clock::time_point expiry) {
    const std::scoped_lock lock(handlesMutex);
    const auto found = handles().find(handle);
    if (found == handles().end())
        return;
    for (const std::string &name : names)
        found->second[name] = expiry;
}

RightsState rightsState(AuthorizationRef handle, const std::vector<std::string> &names,
                        std::chrono::steady_clock::time_point now) {
    const std::scoped_lock lock(handlesMutex);
    const auto found = handles().find(handle);
    if (found == handles().end())
        return RightsState::missing;
    const Rights &rights = found->second;
    if (!std::ranges::all_of(names, [&](const std::string &name) { return rights.contains(name); }))
        return RightsState::missing;
    const bool areValid = std::ranges::all_of(names, [&](const std::string &name) { return rights.at(name) > now; });
    return areValid ? RightsState::granted : RightsState::expired;
}

bool freeHandle(AuthorizationRef handle) {
    const std::scoped_lock lock(handlesMutex);
    return handles().erase(handle) == 1;
}

} // namespace vant
