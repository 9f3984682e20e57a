#include <Security/Authorization.h>

#include "GNUstep/authorization/AuthorizationHandles.hpp"
#include "GNUstep/authorization/AuthorizationPrompt.hpp"
#include "GNUstep/authorization/PrivilegedTool.hpp"
#include "GNUstep/authorization/ToolExit.hpp"

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr AuthorizationFlags knownFlags = kAuthorizationFlagInteractionAllowed | kAuthorizationFlagExtendRights |
                                          kAuthorizationFlagPartialRights | kAuthorizationFlagDestroyRights |
                                          kAuthorizationFlagPreAuthorize;
using Clock = std::chrono::steady_clock;

constexpr auto administratorRight = "system.privilege.admin";

bool hasUnknownFlags(AuthorizationFlags flags) {
    return (flags & ~knownFlags) != 0;
}

OSStatus checkRights(const AuthorizationRights &rights) {
    if (rights.count > 0 && rights.items == nullptr)
        return errAuthorizationInvalidSet;
    for (uint32_t i = 0; i < rights.count; ++i)
        if (rights.items[i].name == nullptr || *rights.items[i].name == '\0')
            return errAuthorizationInvalidTag;
    return errAuthorizationSuccess;
}

std::vector<std::string> rightNames(const AuthorizationRights &rights) {
    std::vector<std::string> names;
    for (uint32_t i = 0; i < rights.count; ++i)
        names.emplace_back(rights.items[i].name);
    return names;
}

OSStatus statusOfPrompt(vant::PromptAnswer answer) {
    switch (answer) {
    case vant::PromptAnswer::granted:
        return errAuthorizationSuccess;
    case vant::PromptAnswer::denied:
        return errAuthorizationDenied;
    case vant::PromptAnswer::cancelled:
        return errAuthorizationCanceled;
    case vant::PromptAnswer::impossible:
        return errAuthorizationInteractionNotAllowed;
    }
    return errAuthorizationInternal;
}

/// Asks for the rights, whatever they are, and adds them to the handle when they are granted.
OSStatus askForRights(AuthorizationRef handle, const std::vector<std::string> &names, vant::PromptReason reason) {
    const OSStatus status = statusOfPrompt(vant::promptAnswer(reason));
    if (status == errAuthorizationSuccess)
        vant::grantRights(handle, names, vant::rightExpiry(Clock::now()));
    return status;
}

OSStatus ensureRights(AuthorizationRef handle, const std::vector<std::string> &names, AuthorizationFlags flags) {
    const auto state = vant::rightsState(handle, names, Clock::now());
    if (state == vant::RightsState::granted)
        return errAuthorizationSuccess;
    if ((flags & kAuthorizationFlagInteractionAllowed) == 0)
        return errAuthorizationInteractionNotAllowed;
    if ((flags & kAuthorizationFlagExtendRights) == 0)
        return errAuthorizationDenied;
    const bool isLater = state == vant::RightsState::expired;
    return askForRights(handle, names, isLater ? vant::PromptReason::expired : vant::PromptReason::first);
}

/// A launch asks again for a right that has expired, but never for one that was not granted before.
OSStatus ensureLaunchRight(AuthorizationRef handle) {
    switch (vant::rightsState(handle, {administratorRight}, Clock::now())) {
    case vant::RightsState::granted:
        return errAuthorizationSuccess;
    case vant::RightsState::expired:
        return askForRights(handle, {administratorRight}, vant::PromptReason::expired);
    case vant::RightsState::missing:
        break;
    }
    return errAuthorizationDenied;
}

AuthorizationRights *copiedRights(const std::vector<std::string> &names) {
    auto *const copy = static_cast<AuthorizationRights *>(std::calloc(1, sizeof(AuthorizationRights)));
    copy->items = static_cast<AuthorizationItem *>(std::calloc(names.size() + 1, sizeof(AuthorizationItem)));
    for (const std::string &name : names)
        copy->items[copy->count++].name = strdup(name.c_str());
    return copy;
}

} // namespace

OSStatus AuthorizationCreate(const AuthorizationRights *rights, const AuthorizationEnvironment *environment,
                             AuthorizationFlags flags, AuthorizationRef *authorization) {
    if (authorization == nullptr)
        return errAuthorizationInvalidPointer;
    if (hasUnknownFlags(flags))
        return errAuthorizationInvalidFlags;
    AuthorizationRef handle = vant::makeHandle();
    if (rights != nullptr)
        if (const OSStatus status = AuthorizationCopyRights(handle, rights, environment, flags, nullptr);
            status != errAuthorizationSuccess) {
            vant::freeHandle(handle);
            return status;
        }
    *authorization = handle;
    return errAuthorizationSuccess;
}

OSStatus AuthorizationCopyRights(AuthorizationRef authorization, const AuthorizationRights *rights,
                                 const AuthorizationEnvironment * /*environment*/, AuthorizationFlags flags,
                                 AuthorizationRights **authorizedRights) {
    if (!vant::isHandle(authorization))
        return errAuthorizationInvalidRef;
    if (rights == nullptr)
        return errAuthorizationInvalidPointer;
    if (hasUnknownFlags(flags))
        return errAuthorizationInvalidFlags;
    if (const OSStatus status = checkRights(*rights); status != errAuthorizationSuccess)
        return status;
    const std::vector<std::string> names = rightNames(*rights);
    if (const OSStatus status = ensureRights(authorization, names, flags); status != errAuthorizationSuccess)
        return status;
    if (authorizedRights != nullptr)
        *authorizedRights = copiedRights(names);
    return errAuthorizationSuccess;
}

OSStatus AuthorizationFreeItemSet(AuthorizationItemSet *set) {
    if (set == nullptr)
        return errAuthorizationInvalidPointer;
    for (uint32_t i = 0; i < set->count; ++i)
        std::free(const_cast<char *>(set->items[i].name));
    std::free(set->items);
    std::free(set);
    return errAuthorizationSuccess;
}

OSStatus AuthorizationExecuteWithPrivileges(AuthorizationRef authorization, const char *pathToTool,
                                            AuthorizationFlags options, char *const *arguments,
                                            FILE **communicationsPipe) {
    if (!vant::isHandle(authorization))
        return errAuthorizationInvalidRef;
    if (pathToTool == nullptr)
        return errAuthorizationInvalidPointer;
    if (options != kAuthorizationFlagDefaults)
        return errAuthorizationInvalidFlags;
    if (const OSStatus status = ensureLaunchRight(authorization); status != errAuthorizationSuccess)
        return status;
    switch (vant::launchTool(pathToTool, arguments, communicationsPipe, vant::postToolExit)) {
    case vant::ToolLaunch::started:
        return errAuthorizationSuccess;
    case vant::ToolLaunch::notExecutable:
        return errAuthorizationToolExecuteFailure;
    case vant::ToolLaunch::noChannel:
        break;
    }
    return errAuthorizationInternal;
}

OSStatus AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags) {
    if (hasUnknownFlags(flags))
        return errAuthorizationInvalidFlags;
    return vant::freeHandle(authorization) ? errAuthorizationSuccess : errAuthorizationInvalidRef;
}
