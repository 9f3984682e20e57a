#import "Pointer.h"
#include <dispatch/dispatch.h>
#import <GNUstepGUI/GSDisplayServer.h>
#include <Security/Authorization.h>

#include "GNUstep/authorization/PanelTexts.hpp"

#include <atomic>
#include <cstdlib>
#include <future>
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

/// A click in the panel as a hand makes it.
std::string clickAt(int x, int y) {
    return "getactivewindow mousemove --window %1 " + std::to_string(x) + " " + std::to_string(y) +
           vant::test::pressAndRelease;
}

/// A person before the screen: waits for the panel, then does what the arguments of xdotool say.
class Person {
public:
    explicit Person(const std::string &actions)
        : thread_([actions] {
              EXPECT_TRUE(vant::test::isGivenKeys("Administrator Rights"));
              EXPECT_TRUE(xdotool(actions));
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

void expectThatItFits(NSView *view) {
    NSCell *cell = [view isKindOfClass:[NSControl class]] ? [(NSControl *)view cell] : nil;
    const NSRect frame = [view frame];
    const NSSize size = [cell cellSizeForBounds:NSMakeRect(0, 0, NSWidth(frame), 10'000)];
    EXPECT_LE(size.height, NSHeight(frame) + 4) << [[cell title] UTF8String];
    if ([view isKindOfClass:[NSButton class]])
        EXPECT_LE([[(NSButtonCell *)cell attributedTitle] size].width, NSWidth(frame) - 8) << [[cell title] UTF8String];
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

TEST_F(AuthorizationPanel, FitsItsTextsInEveryLanguage) {
    static std::string titles;
    NSArray *before = [NSUserDefaults userLanguages];
    for (const vant::PanelTexts &texts : vant::allPanelTexts()) {
        NSString *language = [NSString stringWithUTF8String:std::string(texts.language).c_str()];
        [NSUserDefaults setUserLanguages:[NSArray arrayWithObject:language]];
        whileThePanelIsUp([](NSWindow *panel) {
            titles += std::string([[panel title] UTF8String]) + "\n";
            for (NSView *view in [[panel contentView] subviews])
                expectThatItFits(view);
            [[panel defaultButtonCell] performClick:nil];
        });
        EXPECT_EQ(askForRights(), errAuthorizationSuccess);
        EXPECT_TRUE(titles.ends_with(std::string(texts.title) + "\n")) << titles;
    }
    [NSUserDefaults setUserLanguages:before];
}

// As a window of the host does that a slow window manager puts on the screen after the panel.
TEST_F(AuthorizationPanel, GetsTheKeysBackFromAnotherWindowOfTheHost) {
    static NSWindow *window = nil;
    static std::promise<void> taken;
    window = [[NSWindow alloc] initWithContentRect:NSMakeRect(50, 50, 200, 100)
                                         styleMask:NSTitledWindowMask
                                           backing:NSBackingStoreBuffered
                                             defer:NO];
    [window makeKeyAndOrderFront:nil];
    ASSERT_TRUE(vant::test::settlesDown(window));
    std::thread person([] {
        EXPECT_TRUE(vant::test::isGivenKeys("Administrator Rights"));
        whileThePanelIsUp([](NSWindow *panel) {
            (void)panel;
            [GSServerForWindow(window) setinputfocus:(int)[window windowNumber]];
            taken.set_value();
        });
        taken.get_future().wait();
        EXPECT_TRUE(vant::test::isGivenKeys("Administrator Rights"));
        EXPECT_TRUE(xdotool("key Escape"));
    });
    EXPECT_EQ(askForRights(), errAuthorizationCanceled);
    person.join();
    [window close];
}

TEST_F(AuthorizationPanel, FocusIsOnTheDefaultButtonAndTabReachesCancel) {
    whileThePanelIsUp([](NSWindow *panel) {
        auto *focused = (NSButton *)[panel firstResponder];
        EXPECT_EQ([focused cell], [panel defaultButtonCell]);
        [panel selectNextKeyView:nil];
        auto *next = (NSButton *)[panel firstResponder];
        EXPECT_TRUE([[next keyEquivalent] isEqual:@"\033"]);
        [next performClick:nil];
    });
    EXPECT_EQ(askForRights(), errAuthorizationCanceled);
}

TEST_F(AuthorizationPanel, MainThreadGoesOnWhileAnotherThreadAsks) {
    std::atomic<OSStatus> answer = 1;
    std::thread asker([&] { answer = askForRights(); });
    const auto panelIsUp = [] {
        for (NSWindow *window in [NSApp windows])
            if ([[window title] isEqualToString:@"Administrator Rights"] && [window isVisible])
                return window;
        return (NSWindow *)nil;
    };
    EXPECT_TRUE(vant::test::handleEventsUntil([&] { return panelIsUp() != nil; }, 20));
    EXPECT_EQ([NSApp modalWindow], nil) << "the host's windows still work";
    EXPECT_GT([panelIsUp() level], NSNormalWindowLevel) << "the panel stands over the wizard";
    EXPECT_EQ(answer, 1);
    [[panelIsUp() defaultButtonCell] performClick:nil];
    asker.join();
    EXPECT_EQ(answer, errAuthorizationSuccess);
    EXPECT_EQ(panelIsUp(), nil);
}

TEST_F(AuthorizationPanel, IsShownAtALaunchWhoseRightHasExpired) {
    setenv("VANT_AUTHORIZATION", "grant-expires:0,ask", 1);
    AuthorizationRef handle = nullptr;
    AuthorizationItem item{.name = "system.privilege.admin", .valueLength = 0, .value = nullptr, .flags = 0};
    const AuthorizationRights rights{.count = 1, .items = &item};
    ASSERT_EQ(AuthorizationCreate(&rights, nullptr,
                                  kAuthorizationFlagInteractionAllowed | kAuthorizationFlagExtendRights, &handle),
              errAuthorizationSuccess);
    std::atomic<OSStatus> answer = 1;
    const Person person("key Escape");
    std::thread installer(
        [&] { answer = AuthorizationExecuteWithPrivileges(handle, "/bin/true", 0, nullptr, nullptr); });
    EXPECT_TRUE(vant::test::handleEventsUntil([&] { return answer != 1; }, 20));
    installer.join();
    EXPECT_EQ(answer, errAuthorizationCanceled);
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
