#pragma once
#import <AppKit/AppKit.h>

#include "Summary.hpp"
#include "Timeline.hpp"
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
}

/// Neither the pane nor the timeline is owned; both must outlive the watch.
- (id)initWithPane:(id)watchedPane timeline:(vant::host::Timeline *)runTimeline;

/// Records what has changed since the last look, the slide's title too.
- (void)look;

/// The status text now.
- (NSString *)status;

/// The packages of the run's list, in its order, with the outcomes recorded so far.
- (std::vector<vant::host::Package>)packages;

/// The code of the last failed download, 0 when none has failed.
- (int)downloadError;

@end
