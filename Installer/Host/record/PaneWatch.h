#pragma once
#import <AppKit/AppKit.h>

#include "Summary.hpp"
#include "Timeline.hpp"
#include <atomic>
#include <map>
#include <mutex>
#include <string>

/// Reads a pane from outside, by the names of its fields, and puts what changes on the timeline. Status line and bars
/// tell every change at once, on the thread that makes it; a process has one watch at a time. Main thread.
@interface PaneWatch : NSObject {
    id pane;
    vant::host::Timeline *timeline;
    std::map<std::string, NSProgressIndicator *> bars;
    std::mutex mutex;
    std::map<std::string, std::string> seen;
    std::atomic<double> lastChange;
}

/// Neither the pane nor the timeline is owned; both must outlive the watch.
- (id)initWithPane:(id)watchedPane timeline:(vant::host::Timeline *)runTimeline;

/// Records what has changed since the last look, the slide's title too.
- (void)look;

/// The same of the table's rows, which costs the more the longer the table is.
- (void)lookAtRows;

/// The pane's own word on whether it can be used, "YES" or "NO".
- (NSString *)isValid;

/// The status text now.
- (NSString *)status;

/// The packages of the run's list, in its order, with the outcomes recorded so far.
- (std::vector<vant::host::Package>)packages;

/// How many packages the list holds now.
- (NSUInteger)packageCount;

/// The code of the last failed download, 0 when none has failed.
- (int)downloadError;

/// Why the last package's installer was not started, 0 when it was.
- (int)launchError;

/// YES while the pane shows its installation bar and has something to install.
- (BOOL)isInstalling;

/// YES once the first package is under way.
- (BOOL)hasStarted;

/// How long nothing has changed, in seconds.
- (double)secondsStill;

@end
