#import <AppKit/AppKit.h>
#include <dispatch/dispatch.h>
#include <Security/Authorization.h>

#include "tracking/Pointer.hpp"

#include <atomic>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <thread>

namespace {

using vant::test::xdotool;

OSStatus askForRights() {
    AuthorizationRef handle = nullptr;
    AuthorizationCreate(nullptr, nullptr, kAuthorizationFlagDefaults, &handle);
    AuthorizationItem item{.name = "system.privilege.admin", .valueLength = 0, .value = nullptr, .flags = 0};
    const AuthorizationRights rights{.count = 1, .items = &item};
    return AuthorizationCopyRights(handle, &rights, nullptr,
                                   kAuthorizationFlagInteractionAllowed | kAuthorizationFlagExtendRights, nullptr);
}

constexpr auto panelSearch = "search --sync --onlyvisible --name '^Administrator Rights$' ";

/// A click as a hand makes it: the button stays down for a moment.
std::string clickAt(int x, int y) {
    return "mousemove --window %1 " + std::to_string(x) + " " + std::to_string(y) +
           " sleep 0.1 mousedown 1 sleep 0.1 mouseup 1";
}

/// A person before the screen: waits for the panel, then does what the arguments of xdotool say.
class Person {
public:
    explicit Person(const std::string &actions)
        : thread_([actions] {
              xdotool(panelSearch + std::string("windowactivate --sync"));
              xdotool(panelSearch + actions);
          }) {}
    Person(const Person &) = delete;
    Person &operator=(const Person &) = delete;
    ~Person() { thread_.join(); }

private:
    std::thread thread_;
};

/// Runs the action on the main thread once the panel is up: the main queue is served while a panel is modal.
void whileThePanelIsUp(void (*action)(NSWindow *panel)) {
    dispatch_async_f(dispatch_get_main_queue(), reinterpret_cast<void *>(action),
                     [](void *context) { reinterpret_cast<void (*)(NSWindow *)>(context)([NSApp modalWindow]); });
}

class AuthorizationPanel : public testing::Test {
protected:
    void SetUp() override {
        if (!vant::test::becomeApplication())
            GTEST_SKIP() << "no display";
        unsetenv("VANT_AUTHORIZATION");
    }
};

TEST_F(AuthorizationPanel, ReturnGrants) {
    const Person person("key Return");
    EXPECT_EQ(askForRights(), errAuthorizationSuccess);
}

TEST_F(AuthorizationPanel, EscapeCancels) {
    const Person person("key Escape");
    EXPECT_EQ(askForRights(), errAuthorizationCanceled);
}

TEST_F(AuthorizationPanel, AClickOnOKGrants) {
    const Person person(clickAt(436, 157));
    EXPECT_EQ(askForRights(), errAuthorizationSuccess);
}

TEST_F(AuthorizationPanel, AClickOnCancelCancels) {
    const Person person(clickAt(340, 157));
    EXPECT_EQ(askForRights(), errAuthorizationCanceled);
}

TEST_F(AuthorizationPanel, ClosingItCancels) {
    whileThePanelIsUp([](NSWindow *panel) { EXPECT_FALSE([[panel delegate] windowShouldClose:panel]); });
    EXPECT_EQ(askForRights(), errAuthorizationCanceled);
}

TEST_F(AuthorizationPanel, IsGoneAfterTheAnswer) {
    {
        const Person person("key Return");
        (void)askForRights();
    }
    for (NSWindow *window in [NSApp windows])
        EXPECT_FALSE([[window title] isEqualToString:@"Administrator Rights"] && [window isVisible]);
    EXPECT_EQ([NSApp modalWindow], nil);
}

TEST_F(AuthorizationPanel, NamesTheHostAndTheUser) {
    static std::string texts;
    whileThePanelIsUp([](NSWindow *panel) {
        for (NSView *view in [[panel contentView] subviews])
            if ([view isKindOfClass:[NSTextField class]])
                texts += std::string([[(NSTextField *)view stringValue] UTF8String]) + "\n";
        [[panel defaultButtonCell] performClick:nil];
    });
    EXPECT_EQ(askForRights(), errAuthorizationSuccess);
    EXPECT_NE(texts.find([[[NSProcessInfo processInfo] processName] UTF8String]), std::string::npos) << texts;
    EXPECT_NE(texts.find([NSFullUserName() UTF8String]), std::string::npos) << texts;
}

TEST_F(AuthorizationPanel, AnswersAThreadWhileTheMainThreadServesIt) {
    std::atomic<OSStatus> answer = 1;
    const Person person("key Return");
    std::thread asker([&] { answer = askForRights(); });
    EXPECT_TRUE(vant::test::handleEventsUntil([&] { return answer != 1; }, 20));
    asker.join();
    EXPECT_EQ(answer, errAuthorizationSuccess);
}

} // namespace
