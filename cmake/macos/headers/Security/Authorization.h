#pragma once
#import <Foundation/Basics.h>
#include <MacTypes.h>
#include <stdio.h>

/// Authorization Services: a right that the user grants, and a tool that runs with it.

typedef const struct AuthorizationOpaqueRef *AuthorizationRef;
typedef UInt32 AuthorizationFlags;
typedef const char *AuthorizationString;

enum : AuthorizationFlags {
    kAuthorizationFlagDefaults = 0,
    kAuthorizationFlagInteractionAllowed = 1U << 0,
    kAuthorizationFlagExtendRights = 1U << 1,
    kAuthorizationFlagPartialRights = 1U << 2,
    kAuthorizationFlagDestroyRights = 1U << 3,
    kAuthorizationFlagPreAuthorize = 1U << 4,
};

enum : OSStatus {
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

NS_ASSUME_NONNULL_BEGIN

typedef struct {
    AuthorizationString name;
    size_t valueLength;
    void *_Nullable value;
    UInt32 flags;
} AuthorizationItem;

typedef struct {
    UInt32 count;
    AuthorizationItem *_Nullable items;
} AuthorizationItemSet;

typedef AuthorizationItemSet AuthorizationRights;
typedef AuthorizationItemSet AuthorizationEnvironment;

#define kAuthorizationEmptyEnvironment NULL

PLATFORM_EXPORT OSStatus AuthorizationCreate(const AuthorizationRights *_Nullable rights,
                                             const AuthorizationEnvironment *_Nullable environment,
                                             AuthorizationFlags flags,
                                             AuthorizationRef _Nullable *_Nullable authorization);
PLATFORM_EXPORT OSStatus AuthorizationFree(AuthorizationRef authorization, AuthorizationFlags flags);
PLATFORM_EXPORT OSStatus AuthorizationCopyRights(AuthorizationRef authorization, const AuthorizationRights *rights,
                                                 const AuthorizationEnvironment *_Nullable environment,
                                                 AuthorizationFlags flags,
                                                 AuthorizationRights *_Nullable *_Nullable authorizedRights);
PLATFORM_EXPORT OSStatus AuthorizationFreeItemSet(AuthorizationItemSet *set);
PLATFORM_EXPORT OSStatus AuthorizationExecuteWithPrivileges(AuthorizationRef authorization, const char *pathToTool,
                                                            AuthorizationFlags options,
                                                            char *_Nonnull const *_Nonnull arguments,
                                                            FILE *_Nullable *_Nullable stream)
    API_DEPRECATED("No follower in this framework", macos(10.1, 10.7));

NS_ASSUME_NONNULL_END
