#pragma once
#import "EventRecorder.h"
#import "HostObserver.h"
#import "HostSettings.h"
#import "PaneWatch.h"
#import "WizardWindow.h"

#include "Ending.hpp"
#include <memory>

/// Runs one page: writes the selection files, loads the plug-in, shows its pane, does what the pane asks, and ends the
/// process when the page has ended, with exit status 0 when the page asked to go on. Main thread.
@interface HostController : NSObject <WizardWindowTarget> {
    HostSettings settings;
    std::unique_ptr<vant::host::Timeline> timeline;
    WizardWindow *window;
    HostObserver *observer;
    EventRecorder *recorder;
    VantInstallation *pane;
    PaneWatch *watch;
    BOOL cancelled;
    vant::host::Ending end;
    NSDate *endTime;
}

/// The strings of the settings must outlive the controller.
- (id)initWithSettings:(const HostSettings &)runSettings;

@end
