#include "ui/CellFrame.hpp"
#include <gtest/gtest.h>

using vant::barFrame;
using vant::Frame;
using vant::spinnerFrame;

TEST(CellFrame, TheSpinnerCoversItsCell) {
    const Frame cell{10.5, 20, 18, 22};
    EXPECT_EQ(spinnerFrame(cell), cell);
}

TEST(CellFrame, TheBarLiesFourPointsLowerWithTheSizeOfItsCell) {
    EXPECT_EQ(barFrame({10.5, 20, 150, 22}), (Frame{10.5, 24, 150, 22}));
    EXPECT_EQ(barFrame({0, 0, 0, 0}), (Frame{0, 4, 0, 0}));
}
