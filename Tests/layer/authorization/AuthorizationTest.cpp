#include <Security/Authorization.h>

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace {

constexpr AuthorizationFlags prompting = kAuthorizationFlagInteractionAllowed | kAuthorizationFlagExtendRights;
constexpr AuthorizationFlags unknownFlag = 1U << 30;

AuthorizationRef newHandle() {
    AuthorizationRef handle = nullptr;
    EXPECT_EQ(AuthorizationCreate(nullptr, kAuthorizationEmptyEnvironment, kAuthorizationFlagDefaults, &handle), 0);
    return handle;
}

/// One right, as callers build it.
struct Right {
    explicit Right(const char *name) : item{.name = name, .valueLength = 0, .value = nullptr, .flags = 0} {}
    AuthorizationItem item;
    AuthorizationRights set{.count = 1, .items = &item};
};

OSStatus request(AuthorizationRef handle, const char *name = "system.privilege.admin",
                 AuthorizationFlags flags = prompting) {
    const Right right(name);
    return AuthorizationCopyRights(handle, &right.set, kAuthorizationEmptyEnvironment, flags, nullptr);
}

OSStatus runTrue(AuthorizationRef handle) {
    char *arguments[] = {nullptr};
    return AuthorizationExecuteWithPrivileges(handle, "/bin/true", kAuthorizationFlagDefaults, arguments, nullptr);
}

class Authorization : public testing::Test {
protected:
    Authorization() { unsetenv("VANT_SYSTEM_ROOT"); }
    static void answer(const char *word) { setenv("VANT_AUTHORIZATION", word, 1); }
    AuthorizationRef handle = newHandle();
};

TEST_F(Authorization, VariableAnswersThePrompt) {
    const struct {
        const char *word;
        OSStatus status;
    } rows[] = {
        {"grant", errAuthorizationSuccess},
        {"deny", errAuthorizationDenied},
        {"cancel", errAuthorizationCanceled},
    };
    for (const auto &row : rows) {
        answer(row.word);
        EXPECT_EQ(request(newHandle()), row.status) << row.word;
    }
}

TEST_F(Authorization, AProgramWithoutAnApplicationObjectCannotAsk) {
    unsetenv("VANT_AUTHORIZATION");
    EXPECT_EQ(request(handle), errAuthorizationInteractionNotAllowed);
    answer("perhaps");
    EXPECT_EQ(request(handle), errAuthorizationInteractionNotAllowed);
}

TEST_F(Authorization, GivesNoRightWithoutInteraction) {
    answer("grant");
    EXPECT_EQ(request(handle, "system.privilege.admin", kAuthorizationFlagExtendRights),
              errAuthorizationInteractionNotAllowed);
    EXPECT_EQ(runTrue(handle), errAuthorizationDenied);
}

TEST_F(Authorization, GivesNoRightWithoutLeaveToExtendRights) {
    answer("grant");
    EXPECT_EQ(request(handle, "system.privilege.admin", kAuthorizationFlagInteractionAllowed), errAuthorizationDenied);
    EXPECT_EQ(runTrue(handle), errAuthorizationDenied);
}

TEST_F(Authorization, AGrantedRightIsNotAskedForAgain) {
    answer("grant");
    ASSERT_EQ(request(handle), errAuthorizationSuccess);
    answer("cancel");
    EXPECT_EQ(request(handle), errAuthorizationSuccess);
    EXPECT_EQ(request(handle, "system.privilege.admin", kAuthorizationFlagDefaults), errAuthorizationSuccess);
    EXPECT_EQ(request(handle, "system.preferences"), errAuthorizationCanceled);
}

TEST_F(Authorization, ARightThatHasExpiredIsAskedForAtTheLaunch) {
    const struct {
        const char *variable;
        OSStatus status;
    } rows[] = {
        {"grant-expires:0,grant", errAuthorizationSuccess},
        {"grant-expires:0,deny", errAuthorizationDenied},
        {"grant-expires:0,cancel", errAuthorizationCanceled},
        {"grant-expires:0,ask", errAuthorizationInteractionNotAllowed},
        {"grant-expires:0", errAuthorizationInteractionNotAllowed},
    };
    for (const auto &row : rows) {
        answer(row.variable);
        AuthorizationRef asked = newHandle();
        EXPECT_EQ(request(asked), errAuthorizationSuccess) << row.variable;
        EXPECT_EQ(runTrue(asked), row.status) << row.variable;
        EXPECT_EQ(runTrue(asked), row.status) << row.variable << ", the next launch";
    }
}

TEST_F(Authorization, ARightThatHasExpiredCountsAsMissingToARequest) {
    answer("grant-expires:0,deny");
    ASSERT_EQ(request(handle), errAuthorizationSuccess);
    EXPECT_EQ(request(handle), errAuthorizationDenied);
    EXPECT_EQ(request(handle, "system.privilege.admin", kAuthorizationFlagDefaults),
              errAuthorizationInteractionNotAllowed);
    EXPECT_EQ(request(handle, "system.preferences"), errAuthorizationSuccess) << "the first prompt for another right";
}

TEST_F(Authorization, ARightLastsForItsTime) {
    answer("grant-expires:300,deny");
    ASSERT_EQ(request(handle), errAuthorizationSuccess);
    EXPECT_EQ(runTrue(handle), errAuthorizationSuccess);
    EXPECT_EQ(request(handle, "system.privilege.admin", kAuthorizationFlagDefaults), errAuthorizationSuccess);
}

TEST_F(Authorization, AGrantAtALaunchLastsForItsTimeAgain) {
    answer("grant-expires:0,grant");
    ASSERT_EQ(request(handle), errAuthorizationSuccess);
    answer("grant-expires:300,grant");
    EXPECT_EQ(runTrue(handle), errAuthorizationSuccess);
    answer("grant-expires:300,cancel");
    EXPECT_EQ(runTrue(handle), errAuthorizationSuccess);
}

TEST_F(Authorization, RightsBelongToOneHandle) {
    answer("grant");
    ASSERT_EQ(request(handle), errAuthorizationSuccess);
    EXPECT_EQ(runTrue(newHandle()), errAuthorizationDenied);
}

TEST_F(Authorization, RunsNothingBeforeTheAdministratorRightIsGranted) {
    EXPECT_EQ(runTrue(handle), errAuthorizationDenied);
    answer("grant");
    ASSERT_EQ(request(handle, "system.preferences"), errAuthorizationSuccess);
    EXPECT_EQ(runTrue(handle), errAuthorizationDenied);
    ASSERT_EQ(request(handle), errAuthorizationSuccess);
    EXPECT_EQ(runTrue(handle), errAuthorizationSuccess);
}

TEST_F(Authorization, RunsNothingAfterARefusal) {
    for (const char *word : {"deny", "cancel"}) {
        answer(word);
        EXPECT_NE(request(handle), errAuthorizationSuccess) << word;
        EXPECT_EQ(runTrue(handle), errAuthorizationDenied) << word;
    }
}

TEST_F(Authorization, AFreedHandleIsUnknownToEveryCall) {
    answer("grant");
    ASSERT_EQ(request(handle), errAuthorizationSuccess);
    ASSERT_EQ(AuthorizationFree(handle, kAuthorizationFlagDefaults), errAuthorizationSuccess);
    EXPECT_EQ(request(handle), errAuthorizationInvalidRef);
    EXPECT_EQ(runTrue(handle), errAuthorizationInvalidRef);
    EXPECT_EQ(AuthorizationFree(handle, kAuthorizationFlagDefaults), errAuthorizationInvalidRef);
}

TEST_F(Authorization, AFreedHandleStaysUnknownWhenAnotherIsMade) {
    AuthorizationFree(handle, kAuthorizationFlagDefaults);
    for (int i = 0; i < 100; ++i)
        EXPECT_NE(newHandle(), handle);
    EXPECT_EQ(request(handle), errAuthorizationInvalidRef);
}

TEST_F(Authorization, NoHandleIsUnknown) {
    EXPECT_EQ(request(nullptr), errAuthorizationInvalidRef);
    EXPECT_EQ(runTrue(nullptr), errAuthorizationInvalidRef);
    EXPECT_EQ(AuthorizationFree(nullptr, kAuthorizationFlagDefaults), errAuthorizationInvalidRef);
}

TEST_F(Authorization, RefusesMissingArguments) {
    answer("grant");
    ASSERT_EQ(request(handle), errAuthorizationSuccess);
    char *arguments[] = {nullptr};
    EXPECT_EQ(AuthorizationCreate(nullptr, nullptr, kAuthorizationFlagDefaults, nullptr),
              errAuthorizationInvalidPointer);
    EXPECT_EQ(AuthorizationCopyRights(handle, nullptr, nullptr, prompting, nullptr), errAuthorizationInvalidPointer);
    EXPECT_EQ(AuthorizationExecuteWithPrivileges(handle, nullptr, kAuthorizationFlagDefaults, arguments, nullptr),
              errAuthorizationInvalidPointer);
    EXPECT_EQ(AuthorizationFreeItemSet(nullptr), errAuthorizationInvalidPointer);
}

TEST_F(Authorization, RefusesFlagsThatItDoesNotKnow) {
    answer("grant");
    ASSERT_EQ(request(handle), errAuthorizationSuccess);
    AuthorizationRef other = nullptr;
    char *arguments[] = {nullptr};
    EXPECT_EQ(AuthorizationCreate(nullptr, nullptr, unknownFlag, &other), errAuthorizationInvalidFlags);
    EXPECT_EQ(other, nullptr);
    EXPECT_EQ(request(handle, "system.preferences", prompting | unknownFlag), errAuthorizationInvalidFlags);
    EXPECT_EQ(AuthorizationFree(handle, unknownFlag), errAuthorizationInvalidFlags);
    for (const AuthorizationFlags options : {AuthorizationFlags{1}, AuthorizationFlags{2}, unknownFlag})
        EXPECT_EQ(AuthorizationExecuteWithPrivileges(handle, "/bin/true", options, arguments, nullptr),
                  errAuthorizationInvalidFlags)
            << options;
}

TEST_F(Authorization, RefusesRightsWithoutItemsOrNames) {
    answer("grant");
    const AuthorizationRights withoutItems{.count = 1, .items = nullptr};
    EXPECT_EQ(AuthorizationCopyRights(handle, &withoutItems, nullptr, prompting, nullptr), errAuthorizationInvalidSet);
    EXPECT_EQ(request(handle, nullptr), errAuthorizationInvalidTag);
    EXPECT_EQ(request(handle, ""), errAuthorizationInvalidTag);
}

TEST_F(Authorization, ACreatingCallMayAskForRights) {
    const Right right("system.privilege.admin");
    AuthorizationRef other = nullptr;
    answer("deny");
    EXPECT_EQ(AuthorizationCreate(&right.set, nullptr, prompting, &other), errAuthorizationDenied);
    EXPECT_EQ(other, nullptr);
    answer("grant");
    EXPECT_EQ(AuthorizationCreate(&right.set, nullptr, prompting, &other), errAuthorizationSuccess);
    EXPECT_EQ(runTrue(other), errAuthorizationSuccess);
}

TEST_F(Authorization, TellsTheRightsThatWereGranted) {
    answer("grant");
    const Right right("system.privilege.admin");
    AuthorizationRights *granted = nullptr;
    ASSERT_EQ(AuthorizationCopyRights(handle, &right.set, nullptr, prompting, &granted), errAuthorizationSuccess);
    ASSERT_EQ(granted->count, 1U);
    EXPECT_STREQ(granted->items[0].name, "system.privilege.admin");
    EXPECT_EQ(AuthorizationFreeItemSet(granted), errAuthorizationSuccess);
}

} // namespace
