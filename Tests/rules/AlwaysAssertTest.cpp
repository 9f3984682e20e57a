// Alone among the tests this file is compiled as a release build is, whatever the build.
#ifndef NDEBUG
#error "compiled without the switch of release builds"
#endif

#include <gtest/gtest.h>

#include "base/AlwaysAssert.h"

namespace {

int halfOf(int even) {
    assert(even % 2 == 0);
    return even / 2;
}

} // namespace

TEST(AlwaysAssertDeathTest, AContradictionEndsReleaseBuildsToo) {
    EXPECT_EQ(halfOf(4), 2);
    EXPECT_DEATH(static_cast<void>(halfOf(3)), "even % 2 == 0");
}
