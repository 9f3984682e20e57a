#include "selection/Flow.hpp"

#include <gtest/gtest.h>

namespace {

struct FlowCase {
    std::size_t webSelectionCount;
    bool smartUpdate;
    bool webError;
    vant::Flow flow;
};

TEST(FlowChoice, TheWebFlowNeedsTheSwitchNoErrorAndASelection) {
    constexpr FlowCase cases[] = {
        {1, true, false, vant::Flow::Web},    //
        {30, true, false, vant::Flow::Web},   //
        {0, true, false, vant::Flow::Media},  //
        {2, true, true, vant::Flow::Media},   //
        {2, false, false, vant::Flow::Media}, //
        {2, false, true, vant::Flow::Media},  //
        {0, false, false, vant::Flow::Media},
    };
    for (const FlowCase &row : cases)
        EXPECT_EQ(vant::chooseFlow(vant::isWebFlowAllowed(row.smartUpdate, row.webError), row.webSelectionCount),
                  row.flow)
            << "smart update " << row.smartUpdate << ", web error " << row.webError << ", " << row.webSelectionCount;
}

} // namespace
