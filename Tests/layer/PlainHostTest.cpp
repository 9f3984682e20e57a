#include "Jail.hpp"

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace {

/// What the plain host prints when the administrator prompt is answered so.
std::string runHost(const std::string &answer) {
    const vant::test::Jail jail;
    std::filesystem::permissions(jail.root(), std::filesystem::perms::owner_all);
    const std::string command = "VANT_AUTHORIZATION=" + answer + " TEMP='" + jail.root().string() +
                                "' timeout 30 '" VANT_PLAIN_HOST "' '" VANT_TEST_BUNDLE "' 2>/dev/null";
    FILE *output = popen(("PATH=/usr/bin:/bin; " + command).c_str(), "r"); // NOLINT(cert-env33-c)
    std::string text;
    for (int byte = std::fgetc(output); byte != EOF; byte = std::fgetc(output))
        text += static_cast<char>(byte);
    EXPECT_EQ(pclose(output), 0) << text;
    return text;
}

class PlainHost : public testing::Test {
protected:
    void SetUp() override {
        if (std::getenv("DISPLAY") == nullptr)
            GTEST_SKIP() << "no display";
    }
};

constexpr auto carriedDitto = "ditto " VANT_TEST_BUNDLE "/Resources/tools/ditto\n";

TEST_F(PlainHost, GetsAWorkingPane) {
    EXPECT_EQ(runHost("grant"), std::string("view YES\nvalid YES\n") + carriedDitto);
}

TEST_F(PlainHost, HearsOfARefusal) {
    EXPECT_EQ(runHost("cancel"), std::string("view YES\nvalid NO\n") + carriedDitto);
}

} // namespace
