#include <Security/Authorization.h>

#include "GNUstep/authorization/AuthorizationHandles.hpp"
#include "GNUstep/authorization/AuthorizationPrompt.hpp"
#include "GNUstep/authorization/PrivilegedTool.hpp"

#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr AuthorizationFlags knownFlags = kAuthorizationFlagInteractionAllowed | kAuthorizationFlagExtendRights |
                                          kAuthorizationFlagPartialRights | kAuthorizationFlagDestroyRights |
                                          kAuthorizationFlagPreAuthorize;
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

OSStatus ask() {
    switch (vant::promptAnswer()) {
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

/// What a handle that lacks the rights gets, without regard to which rights they are.
OSStatus extendRights(AuthorizationFlags flags) {
    if ((flags & kAuthorizationFlagInteractionAllowed) == 0)
        return errAuthorizationInteractionNotAllowed;
    if ((flags & kAuthorizationFlagExtendRights) == 0)
        return errAuthorizationDenied;
    return ask();
}

AuthorizationRights *copiedRights(const std::vector<std::string> &names) {
    auto *const copy = static_cast<AuthorizationRights *>(std::calloc(1, sizeof(AuthorizationRights)));
    copy->items = static_cast<AuthorizationItem *>(std::calloc(names.size() + 1, sizeof(AuthorizationItem)));
    for (const std::string &name : names)
        copy->items[copy->count++].name = strdup(name.c_str());
    return copy;
}

} // namespace

namespace vant {

PromptAnswer promptAnswer() {
    const char *const variable = std::getenv("VANT_AUTHORIZATION");
    const std::string_view answer = variable != nullptr ? variable : "";
    if (answer == "grant")
        return PromptAnswer::granted;
    if (answer == "deny")
        return PromptAnswer::denied;
    if (answer == "cancel")
        return PromptAnswer::cancelled;
    return askAdministrator();
}

} // namespace vant

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
    if (!vant::hasRights(authorization, names))
        if (const OSStatus status = extendRights(flags); status != errAuthorizationSuccess)
            return status;
    vant::grantRights(authorization, names);
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
    if (!vant::hasRights(authorization, {administratorRight}))
        return errAuthorizationDenied;
    switch (vant::launchTool(pathToTool, arguments, communicationsPipe)) {
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
