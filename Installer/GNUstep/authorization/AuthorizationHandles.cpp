#include "GNUstep/authorization/AuthorizationHandles.hpp"

#include <algorithm>
#include <cstdint>
#include <map>
#include <mutex>
#include <set>

namespace vant {
namespace {

std::mutex handlesMutex;

/// The rights of each living handle.
std::map<AuthorizationRef, std::set<std::string>> &handles() {
    // Never destroyed: an installer thread may still ask while the process ends.
    static auto *const all = new std::map<AuthorizationRef, std::set<std::string>>;
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

void grantRights(AuthorizationRef handle, const std::vector<std::string> &names) {
    const std::scoped_lock lock(handlesMutex);
    if (const auto found = handles().find(handle); found != handles().end())
        found->second.insert(names.begin(), names.end());
}

bool hasRights(AuthorizationRef handle, const std::vector<std::string> &names) {
    const std::scoped_lock lock(handlesMutex);
    const auto found = handles().find(handle);
    return found != handles().end() &&
           std::ranges::all_of(names, [&](const std::string &name) { return found->second.contains(name); });
}

bool freeHandle(AuthorizationRef handle) {
    const std::scoped_lock lock(handlesMutex);
    return handles().erase(handle) == 1;
}

} // namespace vant
