#include "Orders.hpp"

#include <array>
#include <gtest/gtest.h>
#include <utility>

using vant::host::Orders;
using Lines = std::vector<std::string>;

namespace {

class HostOrders : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(pipe(ends_.data()), 0); }
    void TearDown() override {
        close(ends_[0]);
        closeInput();
    }
    void say(const std::string &text) { ASSERT_EQ(write(ends_[1], text.data(), text.size()), ssize_t(text.size())); }
    void closeInput() { close(std::exchange(ends_[1], -1)); }
    [[nodiscard]] int descriptor() const { return ends_[0]; }

private:
    std::array<int, 2> ends_{};
};

TEST_F(HostOrders, EachLineIsAnOrderOnceItIsWhole) {
    Orders orders(descriptor());
    EXPECT_EQ(orders.take(), Lines{});
    say("draw\nnext");
    EXPECT_EQ(orders.take(), Lines{"draw"});
    say(" page\ndraw\n");
    EXPECT_EQ(orders.take(), (Lines{"next page", "draw"}));
    EXPECT_EQ(orders.take(), Lines{});
    EXPECT_FALSE(orders.ended());
}

TEST_F(HostOrders, EndWhenTheOtherEndIsClosed) {
    Orders orders(descriptor());
    say("draw\n" + std::string(1000, 'x'));
    EXPECT_FALSE(orders.ended());
    closeInput();
    EXPECT_TRUE(orders.ended());
    EXPECT_EQ(orders.take(), Lines{"draw"});
}

TEST_F(HostOrders, EndWhenThereIsNothingToReadFrom) {
    const int closed = dup(descriptor());
    close(closed);
    EXPECT_TRUE(Orders(closed).ended());
}

} // namespace
