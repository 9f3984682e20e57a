#include "selection/Flow.hpp"

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
        {true, false, 1, vant::Flow::Web},    //
        {true, false, 30, vant::Flow::Web},   //
        {true, false, 0, vant::Flow::Media},  //
        {true, true, 2, vant::Flow::Media},   //
        {false, false, 2, vant::Flow::Media}, //
        {false, true, 2, vant::Flow::Media},  //
        {false, false, 0, vant::Flow::Media},
    };
    for (const FlowCase &row : cases)
        EXPECT_EQ(vant::chooseFlow(vant::isWebFlowAllowed(row.smartUpdate, row.webError), row.webSelectionCount),
                  row.flow)
            << "smart update " << row.smartUpdate << ", web error " << row.webError << ", " << row.webSelectionCount;
}

} // namespace
