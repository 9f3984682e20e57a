#include "GNUstep/authorization/AuthorizationScript.hpp"
#include "GNUstep/authorization/AuthorizationHandles.hpp"

#include <gtest/gtest.h>

namespace vant::test {

using namespace std::chrono_literals;

TEST(AuthorizationScript, OneWordAnswersEveryPrompt) {
    const struct {
        const char *variable;
        ScriptedAnswer answer;
    } rows[] = {
        {"grant", ScriptedAnswer::grant}, {"deny", ScriptedAnswer::deny}, {"cancel", ScriptedAnswer::cancel},
        {"ask", ScriptedAnswer::ask},     {"", ScriptedAnswer::ask},      {"perhaps", ScriptedAnswer::ask},
    };
    for (const auto &row : rows)
        EXPECT_EQ(authorizationScript(row.variable), (AuthorizationScript{.first = row.answer, .later = row.answer}))
            << row.variable;
}

TEST(AuthorizationScript, AGrantMayExpireWithAnAnswerForTheLaterPrompts) {
    const struct {
        const char *variable;
        double seconds;
        ScriptedAnswer later;
    } rows[] = {
        {"grant-expires:300", 300, ScriptedAnswer::ask},         {"grant-expires:300,ask", 300, ScriptedAnswer::ask},
        {"grant-expires:0,grant", 0, ScriptedAnswer::grant},     {"grant-expires:0.5,deny", 0.5, ScriptedAnswer::deny},
        {"grant-expires:12,cancel", 12, ScriptedAnswer::cancel},
    };
    for (const auto &row : rows) {
        const auto script = authorizationScript(row.variable);
        EXPECT_EQ(script.first, ScriptedAnswer::grant) << row.variable;
        EXPECT_EQ(script.later, row.later) << row.variable;
        ASSERT_TRUE(script.lifetime) << row.variable;
        EXPECT_EQ(script.lifetime->count(), row.seconds) << row.variable;
    }
}

TEST(AuthorizationScript, WhatCannotBeReadAsksEveryTime) {
    for (const char *variable : {"grant-expires:", "grant-expires:soon", "grant-expires:-1", "grant-expires:5s",
                                 "grant-expires:nan", "grant-expires:1e12", "grant-expires:5,", "grant-expires:5,maybe",
                                 "grant-expires:,deny", "grant-expires", "deny-expires:5", "grant,deny"})
        EXPECT_EQ(authorizationScript(variable), AuthorizationScript{}) << variable;
}

TEST(AuthorizationHandles, RightsExpireAtTheirTime) {
    const auto now = std::chrono::steady_clock::now();
    AuthorizationRef handle = makeHandle();
    EXPECT_EQ(rightsState(handle, {"a"}, now), RightsState::missing);
    grantRights(handle, {"a"}, now + 10s);
    EXPECT_EQ(rightsState(handle, {"a"}, now + 9s), RightsState::granted);
    EXPECT_EQ(rightsState(handle, {"a"}, now + 10s), RightsState::expired);
    EXPECT_EQ(rightsState(handle, {"a", "b"}, now + 11s), RightsState::missing);
    grantRights(handle, {"a"}, now + 20s);
    EXPECT_EQ(rightsState(handle, {"a"}, now + 10s), RightsState::granted);
    freeHandle(handle);
    EXPECT_EQ(rightsState(handle, {"a"}, now), RightsState::missing);
    EXPECT_EQ(rightsState(handle, {}, now), RightsState::missing);
}

} // namespace vant::test
