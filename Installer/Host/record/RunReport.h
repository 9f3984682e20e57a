#pragma once
#import "EventRecorder.h"
#import "HostSettings.h"
#import "PaneWatch.h"
#import "ToolWatch.h"

#include "Ending.hpp"

/// Whom the host has to ask for what it knows of a run. Without a pane watch there was no pane.
struct RunWitnesses {
    PaneWatch *pane;
    EventRecorder *recorder;
    ToolWatch *tools;
};

/// Sums a run up and leaves the summary as "summary.json" in the output folder, if there is one. Gives the host's exit
/// status. Main thread.
int VantWriteReport(const HostSettings &settings, const vant::host::Ending &end, const RunWitnesses &witnesses,
                    double seconds);
