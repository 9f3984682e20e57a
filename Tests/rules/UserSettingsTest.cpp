#include "shell/UserSettings.hpp"

#include <gtest/gtest.h>

namespace {

constexpr std::optional<std::string_view> absent;

TEST(UserSettings, ExactTextsSwitchOn) {
    EXPECT_EQ(vant::settingsSwitches("1", absent, absent), (vant::SettingsSwitches{.smartUpdate = true}));
    EXPECT_EQ(vant::settingsSwitches(absent, "1", absent), (vant::SettingsSwitches{.webError = true}));
    EXPECT_EQ(vant::settingsSwitches(absent, absent, "debug_on"), (vant::SettingsSwitches{.debug = true}));
    EXPECT_EQ(vant::settingsSwitches(absent, absent, absent), vant::SettingsSwitches{});
}

TEST(UserSettings, AnyOtherTextLeavesASwitchOff) {
    for (const std::string_view text : {"", "0", "true", "YES", "01", "1 ", " 1", "1\n", "debug_on "})
        EXPECT_EQ(vant::settingsSwitches(text, text, text), vant::SettingsSwitches{}) << '"' << text << '"';
    EXPECT_EQ(vant::settingsSwitches(absent, absent, "1"), vant::SettingsSwitches{});
    EXPECT_EQ(vant::settingsSwitches(absent, absent, "DEBUG_ON"), vant::SettingsSwitches{});
}

TEST(UserSettings, ManualsAreLookedForOnlyOnNo) {
    EXPECT_TRUE(vant::areManualsLookedFor("no"));
    for (const std::string_view text : {"", "No", "NO", "no ", "yes", "0", "1"})
        EXPECT_FALSE(vant::areManualsLookedFor(text)) << '"' << text << '"';
    EXPECT_FALSE(vant::areManualsLookedFor(absent));
}

} // namespace
