#pragma once
#import "EventRecorder.h"
#import "HostObserver.h"
#import "HostSettings.h"
#import "PaneWatch.h"
#import "ToolWatch.h"
#import "WizardWindow.h"

#include "Notices.hpp"
#include "Orders.hpp"
#include <memory>

/// Runs one page: writes the selection files, loads the plug-in, shows its pane, does what the pane asks, says what the
/// pane is silent about, and ends the process when the page has ended: with exit status 0 when everything is installed,
/// 3 when the page asked to go on although something is not, 1 when it did not come to its end. Main thread.
///
/// One that obeys is told by lines on its standard input: "next page" presses the pane's Next button; "draw" has it
/// draw what it has to show and then put "drawn" on the timeline, for whoever takes pictures of its windows.
@interface HostController : NSObject <WizardWindowTarget> {
    HostSettings settings;
    std::unique_ptr<vant::host::Timeline> timeline;
    WizardWindow *window;
    HostObserver *observer;
    EventRecorder *recorder;
    VantInstallation *pane;
    PaneWatch *watch;
    ToolWatch *tools;
    vant::host::Orders orders;
    BOOL wantsDrawn;
    BOOL cancelled;
    vant::host::Ending end;
    int exitStatus;
    NSDate *reachedTime;
    NSDate *endTime;
    std::optional<vant::host::Notice> shown;
}

/// The strings of the settings must outlive the controller.
- (id)initWithSettings:(const HostSettings &)runSettings;

@end
