#pragma once
#include "plan/Plan.hpp"

namespace vant::media {

/// The packages of the web view, into a plan that has none yet.
void planWeb(Plan &plan, const PlanInput &input);

} // namespace vant::media
