#pragma once
#include <cstdint>
#include <cstdio>

/// The part of the platform's Authorization Services that a package installer uses, under the platform's names.
/// `GNUstep/README.md` lists the variables that steer it.

extern "C" {

typedef int32_t OSStatus;
typedef uint32_t AuthorizationFlags;
typedef const char *AuthorizationString;
typedef struct AuthorizationOpaqueRef *AuthorizationRef;

typedef struct {
    AuthorizationString name;
    size_t valueLength;
    void *value;
    uint32_t flags;
} AuthorizationItem;

typedef struct {
    uint32_t count;
    AuthorizationItem *items;
} AuthorizationItemSet;

typedef AuthorizationItemSet AuthorizationRights;
typedef AuthorizationItemSet AuthorizationEnvironment;

enum : AuthorizationFlags {
    kAuthorizationFlagDefaults = 0,
    kAuthorizationFlagInteractionAllowed = 1U << 0,
    kAuthorizationFlagExtendRights = 1U << 1,
    kAuthorizationFlagPartialRights = 1U << 2,
    kAuthorizationFlagDestroyRights = 1U << 3,
    kAuthorizationFlagPreAuthorize = 1U << 4,
};

enum : OSStatus {
    noErr = 0,
    errAuthorizationSuccess = 0,
    errAuthorizationInvalidSet = -60001,
    errAuthorizationInvalidRef = -60002,
    errAuthorizationInvalidTag = -60003,
    errAuthorizationInvalidPointer = -60004,
    errAuthorizationDenied = -60005,
    errAuthorizationCanceled = -60006,
    errAuthorizationInteractionNotAllowed = -60007,
    errAuthorizationInternal = -60008,
    errAuthorizationInvalidFlags = -60011,
    errAuthorizationToolExecuteFailure = -60031,
    errAuthorizationToolEnvironmentError = -60032,
};

inline constexpr const AuthorizationEnvironment *kAuthorizationEmptyEnvironment = nullptr;

/// Makes a handle; the rights, which may be null, are asked for at once.
OSStatus AuthorizationCreate(const AuthorizationRights *rights, const AuthorizationEnvironment *environment,
                             AuthorizationFlags flags, AuthorizationRef *authorization);

/// Asks for rights on a handle. With interaction allowed a panel asks the user and the call returns after the answer.
OSStatus AuthorizationCopyRights(AuthorizationRef authorization, const AuthorizationRights *rights,
                                 const AuthorizationEnvironment *environment, AuthorizationFlags flags,
                                 AuthorizationRights **authorizedRights);

/// Frees the set that AuthorizationCopyRights has given.
OSStatus AuthorizationFreeItemSet(AuthorizationItemSet *set);

/// Runs a tool with the handle's rights. The stream, when asked for, is the tool's standard input and output. The tool
/// is a plain child of the caller: its process id is not told and nothing waits for it.
OSStatus AuthorizationExecuteWithPrivileges(AuthorizationRef authorization, const char *pathToTool,
                                            AuthorizationFlags options, char *const *arguments,
                                            FILE **communicationsPipe);

/// Gives up a handle.
OSStatus AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags);

} // extern "C"
