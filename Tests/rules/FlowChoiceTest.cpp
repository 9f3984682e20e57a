#include "selection/FlowChoice.hpp"

#include <gtest/gtest.h>

namespace {

struct FlowCase {
    bool smartUpdate;
    bool webError;
    std::size_t webSelectionCount;
    vant::Flow flow;
};

TEST(FlowChoice, TheWebFlowNeedsTheSwitchNoErrorAndASelection) {
    constexpr FlowCase cases[] = {
        {true, false, 1, vant::Flow::web},    //
        {true, false, 30, vant::Flow::web},   //
        {true, false, 0, vant::Flow::media},  //
        {true, true, 2, vant::Flow::media},   //
        {false, false, 2, vant::Flow::media}, //
        {false, true, 2, vant::Flow::media},  //
        {false, false, 0, vant::Flow::media},
    };
    for (const FlowCase &row : cases)
        EXPECT_EQ(vant::chooseFlow(vant::isWebFlowAllowed(row.smartUpdate, row.webError), row.webSelectionCount),
                  row.flow)
            << "smart update " << row.smartUpdate << ", web error " << row.webError << ", " << row.webSelectionCount;
}

} // namespace
